# SPDX-License-Identifier: MIT
"""The program without a window, and its messages when it cannot open one."""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import unittest

from desktop import TIMEOUT, wait_until

ENVIRONMENT = {key: value for key, value in os.environ.items()
               if key not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "KITS_ROOT")}
MACHINES = pathlib.Path(__file__).resolve().parent.parent / "data/machines"
PROGRAM = os.environ["QEL_PROGRAM"]
HOST = str(pathlib.Path(PROGRAM).with_name("qel-desktop"))
PRINTING = [(PROGRAM, "--read"), *((program, option) for program in (PROGRAM, HOST)
                                   for option in ("--help", "--version"))]
PNG = b"\x89PNG\r\n"


class CommandLineTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="qel-command-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.config = self.folder / "config"

    def run_program(self, *arguments, program=PROGRAM, **environment):
        env = dict(ENVIRONMENT, XDG_CONFIG_HOME=str(self.config), XDG_RUNTIME_DIR=str(self.folder))
        env.update(environment)
        return subprocess.run([program, *arguments], env=env, cwd=self.folder, text=True,
                              capture_output=True, timeout=TIMEOUT)

    def assert_fails(self, result, status):
        self.assertEqual(result.returncode, status, result)
        self.assertEqual(result.stdout, "")
        self.assertRegex(result.stderr, r"\Aqel: [^\n]+\n\Z")

    def assert_nothing_written(self):
        self.assertFalse(self.config.exists(), list(self.config.rglob("*")))
        self.assertFalse((self.folder / "kits").exists(), "nobody can reach what only reads")

    def test_help_and_version(self):
        result = self.run_program("--help")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("--snapshot", result.stdout)
        result = self.run_program("--version")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "qel 0.3.0\n", ""))

    def test_wrong_arguments(self):
        for arguments in (["--bogus"], ["file"], ["--read", "--samples", "0"], ["--read", "--interval", "x"],
                          ["--snapshot"], ["--snapshot", "a.png", "--after", "-1"], ["--json"]):
            with self.subTest(arguments):
                self.assert_fails(self.run_program(*arguments), 2)
        self.assert_nothing_written()

    def test_without_a_display(self):
        self.assert_fails(self.run_program(), 1)
        self.assert_fails(self.run_program("--snapshot", "a.png"), 1)
        self.assert_nothing_written()

    def test_with_a_display_that_is_not_there(self):
        self.assert_fails(self.run_program(DISPLAY=":4711"), 1)
        self.assert_nothing_written()

    def test_with_a_platform_that_is_not_there(self):
        for platform in ("bogus", "x" * 100_000, "two\nlines", "-1"):
            with self.subTest(platform[:10]):
                result = self.run_program(QT_QPA_PLATFORM=platform)
                self.assert_fails(result, 1)
                self.assertIn("QT_QPA_PLATFORM", result.stderr)
                self.assertLess(len(result.stderr), 2000)
        self.assert_nothing_written()

    def test_absurd_values(self):
        """Each is refused in one short line, whatever it contains."""
        long = "9" * 100_000
        for option in ("--set-delay", "--set-history", "--after", "--samples", "--interval"):
            for value in ("nan", "-nan", "inf", "-inf", "1e999", "0x10", "", " 1", "1 ", long, b"\xff\xfe", "two\nlines"):
                with self.subTest((option, value[:10])):
                    others = {"--after": ["--snapshot", "a.png"], "--samples": ["--read"], "--interval": ["--read"]}
                    result = self.run_bytes(*others.get(option, []), option, value)
                    self.assertEqual((result.returncode, result.stdout), (2, b""))
                    self.assertRegex(result.stderr, rb"\Aqel: [^\n]{1,2000}\n\Z")
        for option in (long, b"\xff\xfe", "-" + long):
            self.assertEqual(self.run_bytes(option).returncode, 2)
        for name in ("KITS_ROOT", "DISPLAY"):
            for value in ("/y" * 50_000, b"\xff\xfe/\x80", "two\nlines"):
                with self.subTest((name, value[:10])):
                    result = self.run_bytes(**{name: value})
                    self.assertEqual(result.returncode, 1)
                    self.assertRegex(result.stderr, rb"\Aqel: [^\n]{1,2000}\n\Z")
        self.assert_nothing_written()

    def run_bytes(self, *arguments, **environment):
        env = dict(ENVIRONMENT, XDG_CONFIG_HOME=str(self.config), XDG_RUNTIME_DIR=str(self.folder))
        env.update(environment)
        return subprocess.run([PROGRAM, *arguments], env=env, cwd=self.folder, capture_output=True, timeout=TIMEOUT)

    def test_read_as_table(self):
        result = self.run_program("--read")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        lines = result.stdout.splitlines()
        self.assertEqual(lines[0].split(), ["Source", "Share", "Value"])
        self.assertEqual(len({len(line) for line in lines}), 1, "all lines are as long: " + result.stdout)
        names = [line.split("  ")[0] for line in lines[1:]]
        for name in ("All CPUs", "CPU 1", "CPU 1 idle", "Used memory", "Free memory", "Allocated threads"):
            self.assertIn(name, names)
        self.assert_nothing_written()

    def test_read_as_json(self):
        result = self.run_program("--read", "--json", "--samples", "3", "--interval", "0.05")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        samples = [json.loads(line) for line in result.stdout.splitlines()]
        self.assertEqual(len(samples), 3)
        times = [sample["time_us"] for sample in samples]
        self.assertEqual(times, sorted(set(times)))
        for sample in samples:
            sources = {(source["target"], source["flags"]): source for source in sample["sources"]}
            self.assertEqual(len(sources), len(sample["sources"]))
            self.assertEqual(sources[2051, 0]["name"], "All CPUs")
            self.assertEqual(sources[2051, 3]["name"], "All CPUs average (exp. averaged)")
            self.assertAlmostEqual(sources[2052, 0]["fraction"] + sources[2053, 0]["fraction"], 1, places=4)
            for source in sample["sources"]:
                self.assertGreaterEqual(source["fraction"], 0)
                self.assertLessEqual(source["fraction"], 1)
                self.assertTrue(source["caption"])
        self.assert_nothing_written()

    def test_read_agrees_with_the_machine(self):
        def difference():
            memory = dict(line.split(":") for line in pathlib.Path("/proc/meminfo").read_text().splitlines())
            total, available = (int(memory[key].split()[0]) for key in ("MemTotal", "MemAvailable"))
            sample = json.loads(self.run_program("--read", "--json").stdout)
            used = next(s["fraction"] for s in sample["sources"] if (s["target"], s["flags"]) == (2053, 0))
            return abs(used - (1 - available / total))

        # Other processes allocate and free memory in between.
        wait_until(lambda: difference() < 0.03, "the machine's own figure")

    def read(self, machine):
        """Returns what the sources without smoothing show of a recorded machine, by name."""
        result = self.run_program("--read", "--json", "--samples", "3", "--interval", "0.01", KITS_ROOT=str(machine))
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        for line in result.stdout.splitlines():
            found = json.loads(line)["sources"]
            for source in found:
                self.assertTrue(0 <= source["fraction"] <= 1, source)
                self.assertNotRegex(source["caption"], "nan|inf|-")
        return {source["name"]: source["caption"] for source in found if source["flags"] == 0}

    def test_read_of_recorded_machines(self):
        processors = {"two-processors": 2, "eight-processors": 8, "one-offline": 4, "old-kernel": 2,
                      "four-tebibytes": 64, "twelve-tebibytes": 64}
        self.assertEqual({machine.name for machine in MACHINES.iterdir()}, set(processors))
        captions = {}
        for name, count in processors.items():
            with self.subTest(name):
                captions[name] = self.read(MACHINES / name)
                self.assertIn(f"CPU {count}", captions[name])
                self.assertNotIn(f"CPU {count + 1}", captions[name])
        memory = {name: (of["Used memory"], of["Free memory"]) for name, of in captions.items()}
        self.assertEqual(memory["four-tebibytes"], ("102400.0 MB", "4091904.0 MB"))
        self.assertEqual(memory["twelve-tebibytes"], ("6291456.0 MB", "6291456.0 MB"))

    def test_a_recorded_machine_that_is_missing(self):
        for root in (self.folder / "nowhere", self.folder, self.folder / "two\nlines"):
            for arguments in ([], ["--read"], ["--snapshot", "a.png"]):
                with self.subTest((root, arguments)):
                    result = self.run_program(*arguments, KITS_ROOT=str(root))
                    self.assert_fails(result, 1)
                    self.assertIn("KITS_ROOT", result.stderr)
        result = self.run_program(program=HOST, KITS_ROOT=str(self.folder / "nowhere"))
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, r"\Aqel-desktop: [^\n]*KITS_ROOT[^\n]+\n\Z")
        self.assertEqual(self.run_program("--help", KITS_ROOT="/nowhere").returncode, 0, "it reads no machine")
        self.assert_nothing_written()

    def test_read_of_many_processors(self):
        machine = self.folder / "machine"
        shutil.copytree(MACHINES / "eight-processors", machine)
        for count in (256, 1024):
            (machine / "proc/stat").write_text("cpu  1 0 0 0\n" + "".join(
                f"cpu{i} {i} 0 0 0 0 0 0 0 0 0\n" for i in range(count)) + "intr 0\n")
            captions = self.read(machine)
            self.assertIn(f"CPU {count} idle", captions)
            self.assertNotIn(f"CPU {count + 1}", captions)

    def test_read_of_a_container_on_a_busy_machine(self):
        machine = self.folder / "machine"
        shutil.copytree(MACHINES / "two-processors", machine)
        (machine / "sys/fs/cgroup/user.slice/pids.max").write_text("3\n")
        captions = self.read(machine)
        self.assertEqual((captions["Allocated threads"], captions["Available threads"]), ("412 threads", "0 threads"))
        self.assertEqual((captions["Allocated teams"], captions["Available teams"]), ("5 teams", "0 teams"))

    def test_read_sees_a_loaded_processor(self):
        load = subprocess.Popen(["sh", "-c", "while :; do :; done"])
        self.addCleanup(load.wait)
        self.addCleanup(load.kill)
        result = self.run_program("--read", "--json", "--interval", "1")
        shares = {s["target"]: s["fraction"] for s in json.loads(result.stdout)["sources"] if s["flags"] == 0}
        processors = [shares[target] for target in shares if target < 2050 and target % 2 == 0]
        self.assertGreater(sum(processors), 0.5)

    def test_read_ends_when_nobody_reads(self):
        reader = subprocess.Popen(["head", "-n", "1"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
        program = subprocess.Popen([os.environ["QEL_PROGRAM"], "--read", "--json", "--samples", "100000", "--interval",
                                    "0.01"], env=ENVIRONMENT, stdout=reader.stdin, stderr=subprocess.DEVNULL)
        self.addCleanup(program.kill)
        reader.stdin.close()
        reader.wait(TIMEOUT)
        program.wait(TIMEOUT)

    def test_host_help_and_version(self):
        result = self.run_program("--help", program=HOST)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("--version", result.stdout)
        result = self.run_program("--version", program=HOST)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "qel-desktop 0.3.0\n", ""))
        for arguments in (["--bogus"], ["--help", "more"], ["two\nlines"]):
            with self.subTest(arguments):
                result = self.run_program(*arguments, program=HOST)
                self.assertEqual((result.returncode, result.stdout), (2, ""))
                self.assertRegex(result.stderr, r"\Aqel-desktop: [^\n]+\n\Z")

    def test_output_to_a_full_disk(self):
        for program, option in PRINTING:
            with self.subTest((program, option)), open("/dev/full", "w") as full:
                result = subprocess.run([program, option], env=ENVIRONMENT, stdout=full, stderr=subprocess.PIPE,
                                        text=True, timeout=TIMEOUT)
                self.assertEqual(result.returncode, 1)
                self.assertRegex(result.stderr, r"\Aqel(-desktop)?: [^\n]*No space left on device\n\Z")

    def test_output_to_nowhere(self):
        for program, option in PRINTING:
            with self.subTest((program, option)):
                result = subprocess.run(["sh", "-c", 'exec "$0" "$1" >&-', program, option],
                                        env=ENVIRONMENT, stderr=subprocess.PIPE, text=True, timeout=TIMEOUT)
                self.assertEqual(result.returncode, 1)
                self.assertRegex(result.stderr, r"\Aqel(-desktop)?: [^\n]*Bad file descriptor\n\Z")

    def test_read_ends_on_a_signal(self):
        program = subprocess.Popen([os.environ["QEL_PROGRAM"], "--read", "--json", "--samples", "100000", "--interval",
                                    "0.05"], env=ENVIRONMENT, stdout=subprocess.PIPE, text=True)
        self.addCleanup(program.kill)
        self.addCleanup(program.stdout.close)
        json.loads(program.stdout.readline())
        program.send_signal(signal.SIGINT)
        program.stdout.read()
        self.assertEqual(program.wait(TIMEOUT), 0)

    def test_snapshot_without_a_screen(self):
        result = self.run_program("--snapshot", "a.png", "--after", "0.5", QT_QPA_PLATFORM="offscreen")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assertEqual((self.folder / "a.png").read_bytes()[: len(PNG)], PNG)
        self.assert_nothing_written()

    def test_snapshot_into_a_folder_that_is_not_there(self):
        result = self.run_program("--snapshot", "no/a.png", "--after", "0", QT_QPA_PLATFORM="offscreen")
        self.assert_fails(result, 1)


if __name__ == "__main__":
    unittest.main()
