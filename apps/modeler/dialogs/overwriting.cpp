#include "dialogs/overwriting.hpp"

#include "dialogs/question.hpp"
#include "texts/texts.hpp"
#include "tools/winapi.hpp"

using SV::String;

namespace modeler {
namespace {

/// Whether the file is new, or the user agrees that it is overwritten.
bool mayWrite(SV::Window & owner, String const & fileName) {
  return GetFileAttributesA(fileName.c_str()) == INVALID_FILE_ATTRIBUTES ||
         agrees(owner, filled(Text::Overwrite, fileName), SV::WB_DEF_NO);
}

} // namespace

void writeFile(SV::Window & owner, Journal & journal, String const & done, String const & fileName,
               std::function<bool()> const & write) {
  if (!mayWrite(owner, fileName))
    return;
  bool const isWritten = write();
  journal.Add((isWritten ? done : "not " + done) + ": " + fileName);
  if (!isWritten)
    KivErrorBox(&owner, KivErrorBox::WB_OK | KivErrorBox::WB_DEF_OK, filled(Text::NotWritten, fileName))
        .Execute(ShowAlways);
}

} // namespace modeler
