"""Installs the Debian packages in a bare system, uses them, upgrades to them and purges them.

    python3 -B tests/package/debian.py FOLDER

FOLDER has the packages, as ./dev package makes them. The system is made by debootstrap in a
temporary folder, from the first archive of Debian that apt knows here. Needs root and debootstrap;
where either is missing it says so and does nothing. Prints a line for each thing seen; stops at the
first that fails.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
USER = "somebody"


class Failure(Exception):
    pass


def run(*command, **options):
    done = subprocess.run([str(word) for word in command], text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, **options)
    if done.returncode != 0:
        raise Failure("%s\nstatus %d\n%s" % (" ".join(map(str, command)), done.returncode, done.stdout[-4000:]))
    return done.stdout


def expect(what, found, expected):
    if found != expected:
        raise Failure("%s: expected %r, found %r" % (what, expected, found))


def archive():
    """Where apt gets Debian from, and which."""
    known = run("apt-get", "indextargets", "--format", "$(CREATED_BY) $(ORIGIN) $(CODENAME) $(REPO_URI)")
    for line in known.splitlines():
        kind, origin, suite, uri = line.split(" ", 3)
        if kind == "Packages" and origin == "Debian" and re.fullmatch("[a-z]+", suite):
            return suite, uri
    raise Failure("apt knows no archive of Debian")


class System:
    """A bare Debian in a folder."""

    def __init__(self, folder):
        self.root = folder
        run("debootstrap", "--variant=minbase", archive()[0], folder, archive()[1])
        shutil.copy("/etc/resolv.conf", folder / "etc/resolv.conf")
        self.run("useradd", "-m", USER)

    def run(self, *command, user="root"):
        inside = ["chroot", "--userspec=%s" % user, self.root, "env", "-i", "PATH=/usr/sbin:/usr/bin:/sbin:/bin",
                  "HOME=%s" % ("/root" if user == "root" else "/home/" + user), "LC_ALL=C.UTF-8",
                  "DEBIAN_FRONTEND=noninteractive"]
        return run(*inside, *command)

    def shell(self, script):
        """What a script of an ordinary user prints."""
        return self.run("sh", "-ec", "cd\n" + script, user=USER)

    def install(self, packages):
        for package in packages:
            shutil.copy(package, self.root / "root")
        self.run("apt-get", "-y", "-q", "--no-install-recommends", "--allow-downgrades", "install",
                 *["/root/" + package.name for package in packages])

    def names(self):
        """All files but those of the package manager and of users."""
        found = set()
        for folder, folders, files in os.walk(self.root):
            here = "/" + os.path.relpath(folder, self.root)
            folders[:] = [name for name in folders
                          if not re.match(r"/(proc|sys|dev|home|root|tmp|run|var/(lib/(dpkg|apt)|cache|log))$",
                                          os.path.normpath(here + "/" + name))]
            found.update(os.path.normpath(here + "/" + name) for name in folders + files)
        return found


def old_package(packages, folder):
    """The package of before there were five: the same files as one package, the library and the
    documents in other places, with the version that it had. Its contents are those of today: what
    matters for an upgrade is whose the files were and where they lay."""
    tree = folder / "old"
    for package in packages:
        run("dpkg-deb", "-x", package, tree)
    library = tree / "usr/lib"
    own = next(library.glob("*-linux-gnu*"))
    shutil.rmtree(own / "jni")
    os.rename(own / "krpre/libkrpre-qt.so", library / "libkrpre-qt.so")
    (own / "krpre").rmdir()
    for path in [*own.iterdir()]:
        os.rename(path, library / path.name)
    own.rmdir()
    documents = tree / "usr/share/doc"
    for name in documents.iterdir():
        if name.name != "krpre":
            shutil.rmtree(name)
    for page in (documents / "krpre/docs").iterdir():
        os.rename(page, documents / "krpre" / page.name)
    (documents / "krpre/docs").rmdir()
    (tree / "DEBIAN").mkdir()
    version = run("dpkg-deb", "-f", packages[0], "Version").partition("-")[0]
    needed = {name for package in packages for name in run("dpkg-deb", "-f", package, "Depends").strip().split(", ")
              if "krpre" not in name}
    architecture = run("dpkg", "--print-architecture").strip()
    (tree / "DEBIAN/control").write_text(
        "Package: krpre\nVersion: %s\nArchitecture: %s\nMaintainer: nobody <nobody@localhost>\n"
        "Depends: %s\nDescription: source preprocessor\n"
        % (version, architecture, ", ".join(sorted(needed))))
    run("dpkg-deb", "--root-owner-group", "-b", tree, folder / "old.deb")
    return folder / "old.deb"


def use(system, folder):
    """The program, its manual and its examples; a host in C and one in Java; links between documents."""
    expect("what krpre writes for the examples", system.shell(
        "cp -r /usr/share/doc/krpre/examples . && cp -r examples expected && rm examples/orders/*.ppo\n"
        "krpre -q examples/orders/*.prw && diff -r examples expected && rm -r examples expected"), "")
    # Earlier versions wrote beside the standard header when root ran them.
    (system.root / "usr/share/krpre/headers/std.pch").touch()
    expect("headers that a user caches", system.shell(
        "echo > x.prw && krpre --precompiled x.prw && ls .cache/krpre | wc -l && rm -r .cache x.*"), "1\n")
    for file in ("share/doc/krpre/html/index.html", "share/man/man1/krpre.1.gz",
                 "share/bash-completion/completions/krpre", "share/zsh/vendor-completions/_krpre",
                 "share/fish/vendor_completions.d/krpre.fish"):
        expect(file, (system.root / "usr" / file).is_file(), True)
    run("python3", "-B", ROOT / "tests/docs_test.py", system.root / "usr/share/doc/krpre",
        "Documents.test_links_lead_to_files", "HtmlPages")
    library = next((system.root / "usr/lib").glob("*-linux-gnu*/libkrpre.so")).parent
    home = system.root / "home" / USER
    flags = run("pkg-config", "--cflags", "--libs", "krpre",
                env=dict(os.environ, PKG_CONFIG_LIBDIR=str(library / "pkgconfig"))).split()
    run("cc", ROOT / "examples/embed/embed.c", "-o", home / "embed", *flags)
    (home / "host.prw").write_text("x := __KOREL__\n")
    system.shell("./embed host.prw && grep -q 'x := 9' host.ppo && rm host.ppo embed")
    (folder / "Headers.java").write_text(
        "class Headers { public static void main(String[] a) { System.out.print(Krpre.headers()); } }")
    expect("what a Java host is told", run(
        "java", "-Djava.library.path=%s" % (library / "jni"), "-cp", system.root / "usr/share/java/krpre.jar",
        folder / "Headers.java"), str(system.root / "usr/share/krpre/headers"))


def use_bundles(system, packages, folder):
    """What is bundled by the packages' program here gives the same bytes in the system, which has no sources."""
    for package in packages:
        run("dpkg-deb", "-x", package, folder / "here")
    examples = folder / "here/usr/share/doc/krpre/examples"
    library = next((folder / "here/usr/lib").glob("*-linux-gnu*/libkrpre.so")).parent
    # As what krpre recommends, it goes with krpre.
    system.run("apt-get", "-y", "-q", "--no-install-recommends", "--mark-auto", "install", "libarchive13")
    shutil.rmtree(system.root / "usr/share/doc/krpre/examples")
    sources = sorted(examples.glob("orders/*.prw"))
    expect("sources to bundle", len(sources) > 3, True)
    for source in sources:
        run(folder / "here/usr/bin/krpre", "bundle", "-o", system.root / "home" / USER / "bundle.zip",
            source.relative_to(examples.parent), cwd=examples.parent, env={"LD_LIBRARY_PATH": str(library)})
        system.shell("krpre --bundle bundle.zip -o bundle.ppo")
        expect(source.name, (system.root / "home" / USER / "bundle.ppo").read_bytes(),
               source.with_suffix(".ppo").read_bytes())


def purge_leaves_nothing(system, before):
    owned = system.run("dpkg-query", "-W", "-f", "${Package}\n").split()
    system.run("apt-get", "-y", "-q", "--auto-remove", "purge", *[name for name in owned if "krpre" in name])
    expect("what a purge leaves", sorted(system.names() - before), [])


def check(packages, folder):
    started = time.monotonic()

    def seen(what):
        print("debian: %4.0f s: %s" % (time.monotonic() - started, what), flush=True)

    system = System(folder / "system")
    before = system.names()
    seen("a bare system")
    system.install(packages)
    use(system, folder)
    seen("installed and used")
    use_bundles(system, packages, folder)
    seen("bundles of another system run")
    purge_leaves_nothing(system, before)
    seen("purged, and nothing is left")
    old = old_package(packages, folder)
    system.install([old])
    was = system.names() - before
    # The new krpre comes last, so that the others take their files from the old one.
    system.run("dpkg", "--auto-deconfigure", "-i",
               *["/root/" + package.name for package in packages[1:] + packages[:1]])
    owners = system.run("dpkg-query", "-S", "/usr/share/krpre/headers/std.ch", "/usr/bin/krpre")
    expect("owners", re.findall(r"^([\w-]+)", owners, re.MULTILINE), ["libkrpre7", "krpre"])
    moved = sorted(name for name in was & system.names() if re.match(r"/usr/lib/(lib|cmake/|pkgconfig/)", name))
    expect("files of the old package", moved, [])
    use(system, folder)
    seen("upgraded from the one package of before, and used")
    purge_leaves_nothing(system, before)
    seen("purged, and nothing is left")


def main():
    if os.geteuid() != 0 or not shutil.which("debootstrap"):
        print("debian: skipped: a chroot takes root and debootstrap")
        return
    packages = sorted(pathlib.Path(sys.argv[1]).glob("*.deb"), key=lambda package: package.name.split("_"))
    expect("packages", [package.name.split("_")[0] for package in packages],
           ["krpre", "krpre-doc", "libkrpre-dev", "libkrpre-java", "libkrpre7"])
    with tempfile.TemporaryDirectory(prefix="debian") as folder:
        check(packages, pathlib.Path(folder))


try:
    main()
except Failure as failure:
    sys.exit("debian: %s" % failure)
