#pragma once
/// \file
/// The windows of a running sample product.

#include "frame/product_run.hpp"

namespace modeler {

/// The title of its main window.
std::string title();

/// The main window once it is there, or null.
HWND__ * mainWindow(ProductRun & run);

/// The titles of the documents.
std::vector<std::string> documents(HWND__ * window);

/// The visible document with that title once it is there, or null.
HWND__ * documentOf(HWND__ * window, std::string const & title);

/// Whether there is such a document, or comes.
bool waitForDocument(HWND__ * window, std::string const & title);

/// The box of the program's own with that title that is open, or the next one.
HWND__ * ownBox(ProductRun & run, std::string const & boxTitle = title());

/// What that box says. Then the button of that identifier, or of that label, is pressed, and the box goes.
support::BoxTexts answerOwnBox(ProductRun & run, int button, std::string const & boxTitle = title());
support::BoxTexts answerOwnBox(ProductRun & run, char const * button);

/// The system's dialog for files, filled in as a user does; it goes.
void answerFileDialog(ProductRun & run, std::string const & fileName);

} // namespace modeler
