"""korel_library, a rule that preprocesses Korel sources, and krpre_installation, which brings krpre."""

KorelHeaders = provider(
    doc = "What sources of other libraries may include.",
    fields = {"files": "the headers", "directories": "where they are searched, in order"},
)

def _korel_library(ctx):
    here = [ctx.label.package + "/" + name if ctx.label.package else name for name in ctx.attr.includes]
    deps = [dep[KorelHeaders] for dep in ctx.attr.deps]
    files = depset(ctx.files.hdrs, transitive = [dep.files for dep in deps])
    directories = depset(here, transitive = [dep.directories for dep in deps], order = "preorder")

    outputs = []
    for source in ctx.files.srcs:
        output = ctx.actions.declare_file(source.basename[:-len(source.extension)] + "ppo")
        outputs.append(output)
        arguments = ctx.actions.args()
        arguments.add_all(directories, before_each = "-I")

        # Found by this name, the headers that come with krpre stand in no output with the place of a machine.
        arguments.add("-I", ctx.file._standard_header.dirname)
        arguments.add_all(ctx.attr.defines, before_each = "-D")
        arguments.add("-o", output)
        arguments.add(source)
        ctx.actions.run(
            executable = ctx.file._krpre,
            arguments = [arguments],
            inputs = depset([source], transitive = [files]),
            tools = ctx.files._runtime,
            outputs = [output],
            mnemonic = "Korel",
            progress_message = "krpre " + source.short_path,
        )
    return [
        DefaultInfo(files = depset(outputs)),
        KorelHeaders(files = files, directories = directories),
    ]

korel_library = rule(
    implementation = _korel_library,
    attrs = {
        "srcs": attr.label_list(allow_files = [".prw", ".prg", ".prx"], doc = "each is one action"),
        "hdrs": attr.label_list(allow_files = True, doc = "what they and the sources of others include"),
        "includes": attr.string_list(doc = "directories of this package that are searched for headers"),
        "defines": attr.string_list(doc = "NAME or NAME=VALUE"),
        "deps": attr.label_list(providers = [KorelHeaders]),
        "_krpre": attr.label(default = "@krpre//:bin/krpre", allow_single_file = True),
        "_standard_header": attr.label(default = "@krpre//:share/krpre/headers/std.ch", allow_single_file = True),
        "_runtime": attr.label(default = "@krpre//:runtime"),
    },
)

def _krpre_installation(ctx):
    prefix = ctx.os.environ.get("KRPRE_PREFIX", "/usr")

    # Copies, because the program looks for its library beside itself, wherever a link leads.
    for name in ["bin/krpre", "lib/libkrpre.so.7", "share/krpre/headers"]:
        parent = name.rpartition("/")[0]
        done = ctx.execute(["sh", "-ec", "mkdir -p $2; cp -RL $1 $2", "sh", prefix + "/" + name, parent])
        if done.return_code:
            fail("krpre is not installed in %s (set KRPRE_PREFIX): %s" % (prefix, done.stderr))
    ctx.file("BUILD.bazel", """
package(default_visibility = ["//visibility:public"])
exports_files(["bin/krpre", "share/krpre/headers/std.ch"])
filegroup(name = "runtime", srcs = glob(["lib/*", "share/krpre/headers/*"]))
""")

krpre_installation = repository_rule(implementation = _krpre_installation, environ = ["KRPRE_PREFIX"], local = True)
