#include "dialogs/filedialog.hpp"

#include "texts/texts.hpp"
#include "tools/winapi.hpp"

#include <commdlg.h>

#include <string>

using SV::String;

namespace modeler {
namespace {

constexpr char kModels[] = "txt";

using Ask = BOOL(WINAPI *)(OPENFILENAMEA *);

String chosen(SV::Window & owner, Ask ask, DWORD flags, String const & kind, String const & ending) {
  if (SV::Application::IsModalDialogSuppression())
    return {};
  std::string const pattern = std::string("*.") + ending.c_str();
  std::string const filter = std::string(kind.c_str()) + " (" + pattern + ')' + '\0' + pattern + '\0';
  char name[MAX_PATH] = "";
  OPENFILENAMEA dialog = {};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = owner.GethWnd();
  dialog.lpstrFilter = filter.c_str();
  dialog.lpstrFile = name;
  dialog.nMaxFile = sizeof name;
  dialog.lpstrDefExt = ending.c_str();
  dialog.Flags = flags | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return ask(&dialog) != FALSE ? String(name) : String();
}

} // namespace

String chosenModel(SV::Window & owner) {
  return chosen(owner, GetOpenFileNameA, OFN_FILEMUSTEXIST, text(Text::ModelFiles), kModels);
}

String chosenTarget(SV::Window & owner, String const & kind, String const & ending) {
  // The program itself asks before it overwrites a file: that holds for the command line too.
  return chosen(owner, GetSaveFileNameA, OFN_PATHMUSTEXIST, kind, ending);
}

} // namespace modeler
