// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// One HTML text that needs nothing beside it: the body between the head with the styles and the scripts that typeset
/// every element with LaTeX in its attribute data-tex. The title is plain text, the body is HTML. Tables sort by a
/// click on a heading; the last line is the command that makes the page again.
std::string htmlPage(const std::string& title, const std::string& body);

/// A formula set in display style.
std::string formula(const std::string& latex);

/// A plot with its legend (HTML, may be empty) and caption (HTML) as a card.
std::string figure(const std::string& id, const std::string& legend, const std::string& svg,
                   const std::string& caption);

/// The local time, such as "2026-03-09 14:05".
std::string today();

/// Throws Complaint when no file can be written at `path`, or when it is the data file itself (empty: there is none).
/// Leaves nothing behind.
void checkPagePath(const std::string& path, const std::string& dataPath);

/// Writes the text under another name and then renames it, so that nobody ever finds half of it. Throws Complaint.
void writePage(const std::string& path, const std::string& text);
