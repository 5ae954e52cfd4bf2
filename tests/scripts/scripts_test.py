"""scripts_test.py PROJECT: the scripts of the project, run in a small one beside it, as they meet a machine on which
something is not as it should be."""

import fcntl
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(sys.argv[1])
CMAKE = """cmake_minimum_required(VERSION 3.22)
project(Small LANGUAGES CXX)
add_executable(small small.cpp)
"""
PRESETS = """{"version": 3, "configurePresets": [
{"name": "release", "generator": "Ninja", "binaryDir": "${sourceDir}/build/${presetName}"}]}"""


class Scripts(unittest.TestCase):
    def setUp(self):
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="vantry-scripts-"))
        self.addCleanup(shutil.rmtree, self.scratch)
        self.project = self.scratch / "project"
        shutil.copytree(PROJECT / "scripts", self.project / "scripts")
        for script in ("run", "test", "bench"):
            shutil.copy(PROJECT / script, self.project)
        (self.project / "CMakeLists.txt").write_text(CMAKE)
        (self.project / "CMakePresets.json").write_text(PRESETS)
        (self.project / "small.cpp").write_text("int main() { return 0; }\n")

    @property
    def folder(self):
        return self.project / "build/release"

    def run_script(self, *words, code=0, **options):
        """What it says on both channels; it must end with that code."""
        environment = {name: value for name, value in os.environ.items() if name != "VANTRY_BUILD_LOCK"}
        done = subprocess.run([f"./{words[0]}", *words[1:]], cwd=self.project, env=environment, text=True, check=False,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120, **options)
        self.assertEqual(done.returncode, code, done.stdout)
        return done.stdout

    def build(self, **options):
        return self.run_script("scripts/build", "release", **options)

    def test_log_that_cannot_be_written(self):
        (self.project / "build/release.log").mkdir(parents=True)
        self.assertIn("build/release.log cannot be written", self.build())
        self.assertTrue((self.folder / "small").exists(), "the build was left out")

    def test_failing_build(self):
        (self.project / "small.cpp").write_text("int main() { return nothing; }\n")
        self.assertRegex(self.build(code=1), r"small\.cpp:1:21: error: .*nothing(.|\n)*build/release\.log")

    def test_folder_of_another_checkout(self):
        self.build()
        former, self.project = self.project, self.scratch / "moved"
        former.rename(self.project)
        self.assertIn(f"was made for {former}, so it is made anew", self.build())
        self.assertNotIn("made anew", self.build())

    def test_folder_of_another_compiler(self):
        self.build()
        description = next(self.folder.glob("CMakeFiles/*/CMakeCXXCompiler.cmake"))
        version = re.compile(r'(set\(CMAKE_CXX_COMPILER_VERSION ")[^"]*')
        description.write_text(version.sub(r"\g<1>1.0", description.read_text()))
        self.assertIn("was made by version 1.0 of", self.build())
        cache = self.folder / "CMakeCache.txt"
        cache.write_text(re.sub("(CMAKE_CXX_COMPILER:[A-Z]*=).*", r"\g<1>/no/such/compiler", cache.read_text()))
        self.assertIn("/no/such/compiler, which is not there any more", self.build())
        self.assertTrue((self.folder / "small").exists())

    def test_folder_of_another_user(self):
        self.build()
        options = {}
        if os.getuid() == 0:
            self.scratch.chmod(0o755)
            options = {"user": 65534}
        else:
            self.folder.chmod(0o555)
        said = self.build(code=1, **options)
        self.folder.chmod(0o755)
        self.assertRegex(said, "build(/release)? cannot be written; it belongs to .*sudo chown")

    def test_two_at_once(self):
        self.folder.mkdir(parents=True)
        with open(self.folder / "lock", "w", encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)
            waiting = subprocess.Popen(["scripts/build", "release"], cwd=self.project, text=True, stderr=subprocess.PIPE)
            self.assertIn("waiting for it", waiting.stderr.readline())
            self.assertFalse((self.folder / "CMakeCache.txt").exists())
        self.assertIn("Building", waiting.communicate(timeout=120)[1])
        self.assertEqual(waiting.returncode, 0)
        self.assertTrue((self.folder / "small").exists())

    def test_progress(self):
        steps = [f"[{step}/40] Building CXX object a/CMakeFiles/b.dir/c{step}.cpp.o\n" for step in range(1, 41)]
        said = self.run_script("scripts/progress", input="".join(steps))
        self.assertIn(" 50 %  (20 of 40)  c20.cpp\n", said)
        self.assertEqual(len(said.splitlines()), 10)
        self.assertEqual(self.run_script("scripts/progress", input=steps[0].replace("/40", "/10")), "")

    def test_command_lines(self):
        for script in ("run", "test", "bench"):
            self.assertIn(f"./{script} ", self.run_script(script, "--help"))
        self.assertIn("after --picture a word is missing", self.run_script("run", "--picture", code=2))
        self.assertIn("one PREFIX", self.run_script("run", "--install", "a", "b", code=2))
        self.assertIn("does not know --nosuch", self.run_script("test", "--nosuch", code=2))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
