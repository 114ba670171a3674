# SPDX-License-Identifier: MIT
"""The site: the project's Markdown pages as they are, and the references of Python and C++ (target `site`).

The project's folder is the source, so that links between pages hold here and on a forge. CMake gives the version and
the folder of Doxygen's XML (`-D`).
"""
import re
import shutil
import sys
from pathlib import Path

from docutils import nodes
from sphinx.addnodes import desc, desc_name, pending_xref
from sphinx.util import logging

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "python"))

project = "attribute_profile"
extensions = ["myst_parser", "sphinx.ext.autodoc", "numpydoc", "breathe"]
root_doc = "README"
include_patterns = ["*.md", "docs/**", "cluster/*.md"]
exclude_patterns = ["build*", "docs/images"]
highlight_language = "text"
smartquotes_action = "D"  # dashes only: quotes belong to code
myst_heading_anchors = 4  # as a forge makes them: [text](page.md#the-heading)

# The comments need no compiled module.
autodoc_mock_imports = ["attribute_profile._attribute_profile"]
autodoc_typehints = "none"
numpydoc_xref_param_type = False

breathe_default_project = "qel"
breathe_default_members = ("members",)

html_theme = "furo"
html_title = project
html_static_path = ["site.css"]
html_css_files = ["site.css"]
html_show_sphinx = False
html_show_copyright = False
html_copy_source = False

# A forge would show these as text, so the pages have them here only.
NAVIGATION = {
    "README": """

```{toctree}
:hidden:
:caption: Use

docs/user_guide
docs/python
cluster/README
```

```{toctree}
:hidden:
:caption: Reference

docs/reference/toolbox
docs/reference/python
docs/cpp
```

```{toctree}
:hidden:
:caption: Develop

docs/architecture
docs/design
docs/extending
docs/reliability
CONTRIBUTING
CHANGELOG
```
""",
    "docs/cpp": """

## All names

```{toctree}
reference/cpp_profile
reference/cpp_image
reference/cpp_data
reference/cpp_tree
reference/cpp_filter
reference/cpp_function
reference/cpp_scene
reference/cpp_trait
reference/cpp_trace
```
""",
}


def add_text(app, page, source):
    source[0] += NAVIGATION.get(page, "")
    if page == "docs/reference/toolbox":
        source[0] += "".join(help_texts(Path(app.srcdir, "toolbox")))


def help_texts(folder):
    """The first comment of each function for users."""
    for file in sorted(folder.glob("*.m")):
        comment = re.search(r"^%[A-Z](?:.*\n%)*.*\n", file.read_text(), re.MULTILINE)[0]
        yield f"\n## {file.stem}\n\n```text\n{re.sub('^%', '', comment, flags=re.MULTILINE)}```\n"


def link_names(app, doctree):
    """Makes links of names in the text: `qel::name`, and `name(...)` on the page for Python."""
    # qel::qel is a target of CMake.
    others = {"qel::qel", *namespaces(app)}
    for text in list(doctree.findall(nodes.literal)):
        name = text.astext()
        if re.fullmatch(r"qel(::\w+)+", name) and "::internal::" not in name and name not in others:
            link(text, refdomain="cpp", reftype="any", reftarget=name, refwarn=True)
        elif app.env.docname == "docs/python" and re.match(r"\w+(\(|$)", name):
            link(text, refdomain="py", reftype="func", reftarget="attribute_profile." + name.split("(")[0])


def link(text, **target):
    text.replace_self(pending_xref("", text.deepcopy(), **target))


def list_names(app, doctree):
    """Begins each namespace with links to what it has."""
    for namespace in doctree.findall(desc):
        signature, content = namespace
        if namespace["domain"] != "cpp" or not signature.astext().startswith("namespace "):
            continue
        places = {}
        for name in content.findall(desc):
            if content in (name.parent, name.parent.parent) and name[0]["ids"]:
                places.setdefault(next(name[0][-1].findall(desc_name)).astext(), name[0]["ids"][0])
        names = nodes.paragraph()
        for name in sorted(places, key=str.lower):
            names += nodes.reference("", "", nodes.literal("", name), refid=places[name], internal=True)
            names += nodes.Text(" ")
        content.insert(1 if isinstance(content[0], nodes.paragraph) else 0, names)


def tidy_throws(app, doctree):
    """Takes away the dash behind a lone \\throws std::bad_alloc."""
    for paragraph in doctree.findall(nodes.paragraph):
        if paragraph.astext().endswith(" – "):
            del paragraph[1:]


def namespaces(app):
    """Those that have anything to show."""
    pages = [page.read_text() for page in Path(app.config.breathe_projects["qel"]).glob("namespaceqel*.xml")]
    return {re.search("<compoundname>(.*?)<", page)[1] for page in pages if re.search("<innerclass|<memberdef", page)}


def check_namespaces(app):
    """Each namespace has to be on a page."""
    pages = "".join(page.read_text() for page in Path(app.srcdir, "docs/reference").glob("cpp*.rst"))
    for name in sorted(namespaces(app) - set(re.findall(r"doxygennamespace:: (\S+)", pages))):
        logging.getLogger(__name__).warning("no page of docs/reference shows the namespace %s", name)


def copy_front_page(app, error):
    """A web server shows index.html."""
    if not error:
        shutil.copy(Path(app.outdir, f"{root_doc}.html"), Path(app.outdir, "index.html"))


def setup(app):
    app.connect("builder-inited", check_namespaces)
    app.connect("source-read", add_text)
    app.connect("doctree-read", link_names)
    app.connect("doctree-read", list_names)
    app.connect("doctree-read", tidy_throws)
    app.connect("build-finished", copy_front_page)
