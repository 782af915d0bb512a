# SPDX-License-Identifier: Apache-2.0
"""Sphinx: the pages of the Python package, which must be installed where Sphinx runs."""
import re

import orvane

project = "Orvane for Python"
author = copyright = "The Orvane developers"
version = release = orvane.__version__
extensions = ["sphinx.ext.autodoc", "sphinx.ext.napoleon", "sphinx.ext.viewcode", "myst_parser"]
html_theme = "furo"
html_title = f"Orvane {release}"
html_static_path, html_css_files, templates_path = ["static"], ["orvane.css"], ["templates"]
html_sidebars = {"**": ["sidebar/brand.html", "sidebar/search.html", "sidebar/scroll-start.html", "sidebar/navigation.html",
                        "c_reference.html", "sidebar/scroll-end.html"]}
autodoc_member_order = "bysource"
autodoc_default_options = {"members": True}
autodoc_typehints_format = "short"
autodoc_type_aliases = {"ArrayLike": "ArrayLike", "Floats": "ndarray", "Scalar": "Scalar", "Real": "Real"}
python_use_unqualified_type_names = True
napoleon_google_docstring = False
# Links of the papers to files of the repository lead out of the site.
suppress_warnings = ["myst.xref_missing", "myst.header"]


def setup(app):
    # scikit-learn adds these to every estimator.
    app.connect("autodoc-skip-member", lambda app, what, name, *rest: True if re.fullmatch(r"set_\w+_request", name) else None)
