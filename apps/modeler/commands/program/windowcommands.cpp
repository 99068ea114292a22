#include "commands/program/windowcommands.hpp"

#include "windows/documents/windowlist.hpp"

namespace modeler {

Commands windowListCommands(SV::MDIFrame & frame) {
  Commands commands;
  for (HWND const window : openWindows(frame.GetClient().GethWnd())) {
    if (WINDOW_LIST_FIRST + commands.size() > WINDOW_LIST_LAST)
      break;
    std::size_t const place = commands.size();
    auto const id = static_cast<unsigned short>(WINDOW_LIST_FIRST + place);
    auto const name = [place, window] { return nameInList(place, titleOf(window)); };
    auto const isInFront = [&frame, window] {
      SV::MDIChild const * const front = frame.GetActiveChild();
      return front != nullptr && front->GethWnd() == window;
    };
    commands.push_back({MENU_WINDOW, id, name, [window] { showInFront(window); }, isInFront});
  }
  return commands;
}

} // namespace modeler
