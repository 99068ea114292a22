#include "modeler_run.hpp"

#include "aappinfo.hpp"
#include "tools/winapi.hpp"

#include <gtest/gtest.h>

namespace modeler {
namespace {

bool isDocument(HWND window) { return (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_MDICHILD) != 0; }

template <class Button> support::BoxTexts answered(HWND box, Button const & button) {
  support::BoxTexts read = support::readBox(box);
  EXPECT_TRUE(support::pressButton(box, button));
  EXPECT_TRUE(support::waitUntilGone(box));
  return read;
}

} // namespace

std::string title() { return std::string("KIVARA Modeler ") + Kiv_GetVersionString().c_str(); }

HWND mainWindow(ProductRun & run) {
  return support::waitForWindow({.processId = run.child().processId(), .title = title()});
}

std::vector<std::string> documents(HWND window) {
  std::vector<std::string> titles;
  for (HWND const child : support::children(window))
    if (isDocument(child))
      titles.push_back(support::windowText(child));
  return titles;
}

HWND documentOf(HWND window, std::string const & title) {
  HWND document = nullptr;
  support::eventually([&] {
    for (HWND const child : support::children(window))
      if (isDocument(child) && IsWindowVisible(child) && support::windowText(child) == title)
        document = child;
    return document != nullptr;
  });
  return document;
}

bool waitForDocument(HWND window, std::string const & title) { return documentOf(window, title) != nullptr; }

HWND ownBox(ProductRun & run, std::string const & boxTitle) {
  HWND box = nullptr;
  support::eventually([&] {
    for (HWND const window : support::findWindows({.processId = run.child().processId(), .title = boxTitle}))
      if (!support::readBox(window).buttons.empty())
        box = window;
    return box != nullptr;
  });
  return box;
}

support::BoxTexts answerOwnBox(ProductRun & run, int button, std::string const & boxTitle) {
  return answered(ownBox(run, boxTitle), button);
}

support::BoxTexts answerOwnBox(ProductRun & run, char const * button) {
  return answered(ownBox(run), std::string_view(button));
}

void answerFileDialog(ProductRun & run, std::string const & fileName) {
  HWND const dialog = support::waitForWindow({.processId = run.child().processId(), .className = support::kBoxClass});
  ASSERT_TRUE(dialog);
  HWND field = nullptr;
  ASSERT_TRUE(support::eventually([&] {
    for (HWND const child : support::children(dialog))
      if (support::windowClass(child) == "Edit" && IsWindowVisible(child))
        field = child;
    return field != nullptr;
  }));
  SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(fileName.c_str()));
  EXPECT_TRUE(support::pressButton(dialog, IDOK));
  EXPECT_TRUE(support::waitUntilGone(dialog));
}

} // namespace modeler
