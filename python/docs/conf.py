# SPDX-License-Identifier: Apache-2.0
"""Sphinx: the pages of the Python package, which must be installed where Sphinx runs."""
import orvane

project = "Orvane for Python"
author = "The Orvane developers"
version = release = orvane.__version__
extensions = ["sphinx.ext.autodoc", "sphinx.ext.napoleon", "sphinx.ext.viewcode"]
html_theme = "furo"
html_title = f"Orvane {release}"
autodoc_member_order = "bysource"
autodoc_default_options = {"members": True, "show-inheritance": True}
autodoc_mock_imports = []
napoleon_google_docstring = False
nitpicky = False
