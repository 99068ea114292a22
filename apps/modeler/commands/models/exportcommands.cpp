#include "commands/models/exportcommands.hpp"

#include "dialogs/filedialog.hpp"
#include "dialogs/overwriting.hpp"
#include "model/writing/modelxml.hpp"
#include "printing/picturefile.hpp"
#include "texts/exporttexts.hpp"

#include <utility>

using SV::String;

namespace modeler {

Commands ExportCommands::GetCommands() {
  auto const writeXml = [](String const & file, ProcessWindow const & window) {
    return writeXmlFile(file, window.GetModel());
  };
  auto const writeDrawing = [](String const & file, ProcessWindow const & window) {
    return writePicture(file, window.GetFont(), window.GetLayout());
  };
  return {separator(MENU_FILE), command(FILE_EXPORT_XML, kExportXml, kXmlFiles, "xml", writeXml),
          command(FILE_EXPORT_PICTURE, kExportPicture, kPictureFiles, "bmp", writeDrawing)};
}

Command ExportCommands::command(unsigned short id, Text name, Text kind, char const * ending, Write write) {
  auto const ask = [this, kind, ending, write = std::move(write)] {
    String const file = chosenTarget(frame_, text(kind), ending);
    ProcessWindow const * const window = documents_.GetFront(); // the dialog may have closed it
    if (file.Len() > 0 && window != nullptr)
      writeFile(frame_, journal_, "exported", file, [&] { return write(file, *window); });
  };
  return {MENU_FILE, id, named(name), ask, [] { return false; }, [this] { return documents_.GetFront() != nullptr; }};
}

} // namespace modeler
