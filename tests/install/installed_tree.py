"""installed_tree.py BUILD VERSION: installs the build into a scratch folder, and tries what is there as somebody who
has nothing else: the programs, the files for the desktop, and the examples, built by CMake and by pkg-config."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

BUILD, VERSION = sys.argv[1:3]
HERE = pathlib.Path(__file__).resolve().parent
SCRATCH = pathlib.Path(tempfile.mkdtemp(prefix="vantry-install-"))
TREE = SCRATCH / "tree"
PLUGINS = TREE / "lib/vantry/plugins"
INI = "# Keep this\n[pump]\nspeed  =  1200 ; rpm\nname = left\n"
WARNINGS = "-Wall -Wextra -Wpedantic -Werror"


def run(*command, code=0, **variables):
    """The output of a command, which must end with that code."""
    environment = {name: value for name, value in os.environ.items() if name not in ("LD_LIBRARY_PATH", "DISPLAY")}
    environment |= {"QT_QPA_PLATFORM": "offscreen", "XDG_CONFIG_HOME": str(SCRATCH / "settings"),
                    "XDG_RUNTIME_DIR": str(SCRATCH)} | variables
    done = subprocess.run([str(word) for word in command], env=environment, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=300, check=False)
    if done.returncode != code:
        raise AssertionError(f"{command} ended with {done.returncode}:\n{done.stdout}")
    return done.stdout


def file(name, content):
    path = SCRATCH / name
    path.write_text(content)
    return path


def build(source, *options):
    """Builds a project of its own against the installed tree; gives its build folder."""
    folder = SCRATCH / "build" / source.name
    run("cmake", "-G", "Ninja", "-S", source, "-B", folder, f"-DCMAKE_PREFIX_PATH={TREE}", "-DCMAKE_BUILD_TYPE=Debug",
        f"-DCMAKE_CXX_FLAGS={WARNINGS}", *options)
    run("cmake", "--build", folder)
    return folder


class InstalledTree(unittest.TestCase):
    def test_the_module_for_stores_is_beside_the_libraries(self):
        module = TREE / "lib/vantry/modules/libvantry-etcd.so"
        nobody = "etcd://127.0.0.1:1/store"
        self.assertIn("127.0.0.1:1: ", run(TREE / "bin/vantry", "list", nobody, code=4))
        away = module.rename(module.with_suffix(".away"))
        try:
            self.assertIn("vantry-etcd", run(TREE / "bin/vantry", "list", nobody, code=4))
        finally:
            away.rename(module)

    def test_programs_find_their_libraries_and_the_plug_in(self):
        for program in ("vantry", "vantry-desk"):
            self.assertIn(VERSION, run(TREE / "bin" / program, "-V"))
            needed = run("ldd", TREE / "bin" / program)
            self.assertNotIn("not found", needed)
            self.assertIn(f"{TREE}/bin/../lib/libvantry_core.so.1", needed)
            self.assertNotIn("grpc", needed)  # only who opens a store loads that
        ini = file("app.ini", INI)
        self.assertEqual(run(TREE / "bin/vantry", "get", ini, "pump.speed"), "1200\n")

        picture, beside, empty = SCRATCH / "with.png", SCRATCH / "beside.png", SCRATCH / "without.png"
        run(TREE / "bin/vantry-desk", "--picture", picture, ini)
        stranger = TREE / "bin/ld.so"
        stranger.write_text("no plug-in")
        run(TREE / "bin/vantry-desk", "--picture", beside, ini)
        stranger.unlink()
        self.assertEqual(picture.read_bytes(), beside.read_bytes(), "a library among the programs was tried")
        moved = PLUGINS.rename(PLUGINS.with_name("elsewhere"))
        run(TREE / "bin/vantry-desk", "--picture", empty, ini)
        moved.rename(PLUGINS)
        self.assertNotEqual(picture.read_bytes(), empty.read_bytes(), "the plug-in in its folder was not loaded")

    def test_completion(self):
        complete = """source $0; cd $1; compopt() { :; }; COMP_WORDS=($2); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
            COMP_LINE=$2 COMP_POINT=${#2} "$3"; echo "${COMPREPLY[@]}" """
        folder = TREE / "share/bash-completion/completions"
        file("completed.ini", INI)
        for line, expected in (("vantry get completed.ini pump.sp", "pump.speed"), ("vantry-desk --saf", "--safe"),
                               ("vantry-desk --plugin-dir tre", "tree"), ("vantry-desk compl", "completed.ini")):
            program = line.split()[0]
            said = run("bash", "-c", complete, folder / program, SCRATCH, line, "_" + program.replace("-", "_"),
                       PATH=f"{TREE}/bin:{os.environ['PATH']}")
            self.assertEqual(said.strip(), expected)

    def test_program_with_the_repository(self):
        program = build(TREE / "share/vantry/examples/watch_and_save") / "watch_and_save"
        ini = file("watched.ini", INI)
        self.assertEqual(run(program, "ini", ini, "*.speed", "pump.speed", "900"), "app.pump.speed is 900\n")
        self.assertEqual(ini.read_text(), INI.replace("1200", "900"))
        refused = run(program, "ini", ini, "*.speed", "pump.speed", "fast", code=1)
        self.assertIn("fast", refused)
        broken = file("broken.json", '{"a": }')
        self.assertIn("broken.json:1:7", run(program, "json", broken, "*", "a", "1", code=1))
        self.assertEqual(ini.read_text(), INI.replace("1200", "900"))
        self.assertNotIn("Qt5Gui", run("ldd", program))

    def test_plug_in_and_its_hosts(self):
        plugin = build(TREE / "share/vantry/examples/label_plugin") / "label_plugin.so"
        include = TREE / "include/vantry"
        headers = [f'#include "{header.relative_to(include)}"\n' for header in sorted(include.rglob("*.h"))]
        # In both orders: a header that needs one which it does not include comes before that one in one of them.
        sources = [file("forward.cpp", "".join(headers)), file("backward.cpp", "".join(reversed(headers)))]
        host = build(HERE / "label_host", f"-DALL_HEADERS={';'.join(map(str, sources))}") / "label_host"
        app = file("app.json", '{"pump": {"speed": 1200}}')
        self.assertEqual(run(host, plugin, app, "900", VANTRY_LABEL_PATH="app.pump.speed"), "label: 1200\nlabel: 900\n")
        self.assertIn("passed", run(TREE / "bin/vantry-desk", "--try-plugin", plugin))
        run("cmake", "--install", plugin.parent)
        self.assertTrue((PLUGINS / plugin.name).exists(), "the plug-in was not installed to where the desk looks")
        (PLUGINS / plugin.name).unlink()

    def test_pkg_config(self):
        def flags(*words):
            return run("pkg-config", *words, PKG_CONFIG_PATH=str(TREE / "lib/pkgconfig")).split()

        program = SCRATCH / "by_pkg_config"
        source = TREE / "share/vantry/examples/watch_and_save/main.cpp"
        run("c++", "-std=c++17", "-fPIC", *flags("--cflags", "vantry"), source, "-o", program, *flags("--libs", "vantry"))
        ini = file("packaged.ini", INI)
        said = run(program, "ini", ini, "*", "pump.name", "right", LD_LIBRARY_PATH=str(TREE / "lib"))
        self.assertEqual(said, "app.pump.name is right\n")
        self.assertIn("-lvantry_host", flags("--libs", "vantry-host"))
        self.assertTrue(PLUGINS.samefile(flags("--variable=plugindir", "vantry-host")[0]))

    def test_desktop_and_manuals(self):
        share = TREE / "share"
        run("desktop-file-validate", share / "applications/vantry-desk.desktop")
        run("appstreamcli", "validate", "--no-net", share / "metainfo/org.vantry.desk.metainfo.xml")
        for program in ("vantry", "vantry-desk"):
            for language, name in (("man", "NAME"), ("man/de", "BEZEICHNUNG")):
                manual = share / language / "man1" / f"{program}.1"
                self.assertEqual(run("groff", "-man", "-ww", "-z", "-Kutf8", manual), "")
                self.assertIn(f'.SH "{name}"', manual.read_text(encoding="utf-8"))
        run("update-mime-database", share / "mime")
        monitor = file("list.dap", "a.b\n")
        kind = run("gio", "info", "-a", "standard::content-type", monitor, XDG_DATA_DIRS=f"{share}:/usr/share",
                   XDG_DATA_HOME=str(SCRATCH))
        self.assertIn("application/x-vantry-monitor-list", kind)
        self.assertTrue((share / "icons/hicolor/scalable/apps/vantry-desk.svg").exists())


if __name__ == "__main__":
    try:
        run("cmake", "--install", BUILD, "--prefix", TREE)
        PLUGINS = next(TREE.rglob("Vantry.so")).parent
        unittest.main(argv=sys.argv[:1])
    finally:
        shutil.rmtree(SCRATCH)
