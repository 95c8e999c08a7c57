# SPDX-License-Identifier: MIT
# qel_resource(TARGET NAME FILE): links a file into a program or a test program, as its resource NAME. A JSON message
# (.json) or a translation (.ts) is flattened and has the type B_ANY_TYPE. A picture (.png) is stored as its pixels, and
# any other file as it is; both have the type B_RAW_TYPE. FILE is relative to the project's folder.
function(qel_resource target name file)
    set(input ${PROJECT_SOURCE_DIR}/${file})
    set(output ${CMAKE_CURRENT_BINARY_DIR}/${target}_${name}.cpp)
    add_custom_command(OUTPUT ${output}
        COMMAND resources ${name} ${input} ${output}
        DEPENDS resources ${input} VERBATIM)
    target_sources(${target} PRIVATE ${output})
    # This source does not use the shared precompiled headers.
    set_source_files_properties(${output} PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# qel_translations(TARGET): links all translations into a program, as its resources "Language.de" and so on.
function(qel_translations target)
    file(GLOB files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/translations/qel_*.ts)
    foreach(file ${files})
        string(REGEX REPLACE ".*qel_(.*)[.]ts$" "Language.\\1" name ${file})
        qel_resource(${target} ${name} ${file})
    endforeach()
endfunction()
