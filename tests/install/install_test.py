#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Installs the built tree into a temporary prefix and builds and runs host programs against it.

usage: install_test.py MODE
  cmake       programs found through find_package(Orvane)
  pkg-config  programs built by the flags of orvane.pc
  readme      the C program of README.md, built by the commands that the README gives
  layout      names, links and SONAME of what was installed
  subproject  a project that takes the sources by add_subdirectory
  deb         the Debian packages in a clean root: C, C++ and Rust programs against them, and their removal
The settings of the build come in the environment: BUILD, SOURCE, LIBDIR, VERSION, CC, CXX, CFLAGS, CXXFLAGS.
"""
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

ENV = os.environ
SOURCE = pathlib.Path(ENV["SOURCE"])
CONSUMER = SOURCE / "tests/install/consumer"
EXPECTED = "-5 9 1\n"


def run(command, **options):
    """Runs a command, gives its standard output; a failure shows all that it wrote and ends the test."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **options)
    if done.returncode:
        sys.exit(f"failed ({done.returncode}): {shlex.join(str(w) for w in command)}\n{done.stdout}{done.stderr}")
    return done.stdout


def expect(actual, expected, what):
    if actual != expected:
        sys.exit(f"{what}: expected {expected!r}, got {actual!r}")


def by_cmake(prefix, work):
    run(["cmake", "-S", CONSUMER, "-B", work / "build", "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={prefix}",
         f"-DORVANE_EXPECTED_VERSION={ENV['VERSION']}", f"-DPROGRAMS={CONSUMER}/host.c;{CONSUMER}/host.cpp",
         f"-DCMAKE_C_COMPILER={ENV['CC']}", f"-DCMAKE_CXX_COMPILER={ENV['CXX']}",
         f"-DCMAKE_C_FLAGS={ENV['CFLAGS']}", f"-DCMAKE_CXX_FLAGS={ENV['CXXFLAGS']}"])
    run(["cmake", "--build", work / "build"])
    for name in ("host_c", "host_cpp"):
        expect(run([work / "build" / name]), EXPECTED, name)


def pkg_config_flags(prefix, library_dir):
    environment = dict(ENV, PKG_CONFIG_PATH=str(library_dir / "pkgconfig"))
    expect(run(["pkg-config", "--modversion", "orvane"], env=environment), ENV["VERSION"] + "\n", "version of orvane.pc")
    flags = shlex.split(run(["pkg-config", "--cflags", "--libs", "orvane"], env=environment))
    places = {os.path.realpath(flag[2:]) for flag in flags if flag[:2] in ("-I", "-L")}
    expect(places, {os.path.realpath(prefix / "include"), os.path.realpath(library_dir)}, "places in orvane.pc")
    return flags


def by_pkg_config(prefix, work, library_dir):
    flags = pkg_config_flags(prefix, library_dir)
    host = dict(ENV, LD_LIBRARY_PATH=str(library_dir))
    for compiler, options, source in ((ENV["CC"], ENV["CFLAGS"], "host.c"), (ENV["CXX"], ENV["CXXFLAGS"], "host.cpp")):
        program = work / source.replace(".", "_")
        run([compiler, *shlex.split(options), CONSUMER / source, "-o", program, *flags])
        expect(run([program], env=host), EXPECTED, source)


def by_readme(work, library_dir):
    """The first C block of the README is host.c, the comment behind `// prints` its output, the line with pkg-config
    the command that builds it."""
    readme = (SOURCE / "README.md").read_text()
    program = re.search(r"```c\n(.*?)```", readme, re.S).group(1)
    command = re.search(r"^(cc .*pkg-config.*)$", readme, re.M).group(1)
    printed = "".join(line + "\n" for line in re.findall(r"// prints (.*)$", program, re.M))
    if not printed:
        sys.exit("the README's program says nowhere what it prints")
    (work / "host.c").write_text(program)
    (work / "cc").symlink_to(ENV["CC"])
    host = dict(ENV, PKG_CONFIG_PATH=str(library_dir / "pkgconfig"), LD_LIBRARY_PATH=str(library_dir),
                PATH=f"{work}:{ENV['PATH']}")
    run(["sh", "-c", f"{command} {ENV['CFLAGS']}"], cwd=work, env=host)
    expect(run([work / "host"], env=host), printed, "the README's program")


def layout(prefix, library_dir):
    real = library_dir / f"liborvane.so.{ENV['VERSION']}"
    soname = "liborvane.so." + ENV["VERSION"].split(".")[0]
    expect(os.path.realpath(library_dir / "liborvane.so"), os.path.realpath(real), "liborvane.so")
    expect(os.path.realpath(library_dir / soname), os.path.realpath(real), soname)
    expect(re.findall(r"SONAME\s+(\S+)", run(["objdump", "-p", real])), [soname], "SONAME")
    expect(sorted(path.name for path in (prefix / "include/orvane").iterdir()),
           sorted(path.name for path in (SOURCE / "include/orvane").glob("*.h")), "installed headers")
    run_path = re.findall(r"RU?N?PATH\s+(\S+)", run(["objdump", "-p", real]))
    expect(run_path, [], "run path of the installed library")


def subproject(work):
    """Configures a project that has the sources as a folder and compiles its own program. The library itself is the one
    that is built already: it is not compiled once more."""
    run(["cmake", "-S", CONSUMER / "subproject", "-B", work / "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
         f"-DORVANE_SOURCE={SOURCE}", f"-DORVANE_OSQP_CACHE={ENV['OSQP_CACHE']}", f"-DHOST={CONSUMER}/host.c",
         f"-DCMAKE_C_COMPILER={ENV['CC']}", f"-DCMAKE_CXX_COMPILER={ENV['CXX']}"])
    targets = run(["cmake", "--build", work / "build", "--target", "help"])
    expect(re.findall(r"^(\w+_test|orvane-\w+|package):", targets, re.M), [], "targets of no use to another project")
    inputs = run(["ninja", "-C", work / "build", "-t", "query", "host"])
    expect("orvane/liborvane.so" in inputs, True, "the library as part of the project")
    run(["ninja", "-C", work / "build", "CMakeFiles/host.dir/host.c.o"])


def packages(work):
    """The two packages of the build tree, quickly packed. As the library's folder is that of the tree, scripts/package
    alone makes what is to be handed out."""
    run(["cpack", "--config", pathlib.Path(ENV["BUILD"], "CPackConfig.cmake"), "-B", work / "packed",
         "-D", "CPACK_DEBIAN_COMPRESSION_TYPE=gzip"])
    made = sorted((work / "packed").glob("*.deb"))
    major = ENV["VERSION"].split(".")[0]
    expect([path.name.split("_")[:2] for path in made],
           [["liborvane-dev", ENV["VERSION"]], [f"liborvane{major}", ENV["VERSION"]]], "packages")
    return made


def by_rust(prefix, work, library_dir):
    """A Rust program whose declarations bindgen makes from the C headers."""
    if not shutil.which("cargo") or not shutil.which("bindgen"):
        print("without cargo or bindgen: no program in Rust")
        return
    if "sanitize" in ENV["CFLAGS"]:
        return  # its run-time must come first, which a program in Rust does not know
    shutil.copytree(CONSUMER / "rust", work / "rust")
    environment = dict(ENV, PKG_CONFIG_PATH=str(library_dir / "pkgconfig"), LD_LIBRARY_PATH=str(library_dir),
                       ORVANE_INCLUDE=str(prefix / "include"))
    expect(run(["cargo", "run", "--quiet", "--offline"], cwd=work / "rust", env=environment), EXPECTED, "Rust")


def by_packages(work):
    made = packages(work)
    root = work / "root"
    (root / "var/lib/dpkg/info").mkdir(parents=True)
    (root / "var/lib/dpkg/updates").mkdir()
    (root / "var/lib/dpkg/status").touch()
    as_root = [] if os.geteuid() == 0 else ["fakeroot"]
    # What they depend on is in the system around, not in this root.
    dpkg = [*as_root, "dpkg", f"--root={root}", "--force-depends", "--force-not-root", f"--log={work}/dpkg.log"]
    run([*dpkg, "-i", *made])
    prefix = root / "usr"
    library_dir = prefix / ENV["LIBDIR"]
    by_cmake(prefix, work)
    by_pkg_config(prefix, work, library_dir)
    by_rust(prefix, work, library_dir)
    run([*dpkg, "-P", "liborvane-dev", "liborvane" + ENV["VERSION"].split(".")[0]])
    left = [str(path.relative_to(root)) for path in root.rglob("*") if not path.is_relative_to(root / "var/lib/dpkg")
            and not path.is_dir()]
    expect(left, [], "files left behind")


def main():
    mode = sys.argv[1]
    if mode == "deb" and not (shutil.which("dpkg") and (os.geteuid() == 0 or shutil.which("fakeroot"))):
        sys.exit(77)
    with tempfile.TemporaryDirectory(prefix="orvane-install-") as folder:
        first, prefix, work = (pathlib.Path(folder, name) for name in ("first", "prefix", "work"))
        work.mkdir()
        if mode == "subproject":
            return subproject(work)
        if mode == "deb":
            return by_packages(work)
        run(["cmake", "--install", ENV["BUILD"], "--prefix", first])
        shutil.move(first, prefix)  # what was installed must not know its first place
        library_dir = prefix / ENV["LIBDIR"]
        if mode == "cmake":
            by_cmake(prefix, work)
        elif mode == "pkg-config":
            by_pkg_config(prefix, work, library_dir)
        elif mode == "readme":
            by_readme(work, library_dir)
        elif mode == "layout":
            layout(prefix, library_dir)
        else:
            sys.exit(__doc__)


main()
