# For sphinx-build, which makes HTML pages of this folder: the target "pages".
import re

project = "krpre"
extensions = ["myst_parser"]
myst_heading_anchors = 3
highlight_language = "none"
html_theme = "alabaster"
html_theme_options = {"page_width": "80em", "show_powered_by": False}
html_sidebars = {"**": ["searchbox.html", "globaltoc.html"]}
html_copy_source = False
html_show_copyright = False
html_show_sphinx = False
html_use_index = False
html_show_search_summary = False  # which needs a web server
smartquotes = False


def add_contents(_app, name, source):
    """The list in index.md is the order of the pages."""
    if name == "index":
        pages = re.findall(r"\]\((\w+)\.md\)", source[0])
        source[0] += "\n```{toctree}\n:hidden:\n\n%s\n```\n" % "\n".join(pages)


def setup(app):
    app.connect("source-read", add_contents)
