# SPDX-License-Identifier: MIT
# Completion of qel-desktop for bash.

complete -W '--help --version' qel-desktop
