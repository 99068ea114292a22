#include "modules/modulefiles.hpp"

#include "common/text.hpp"
#include "common/wholefile.hpp"

#include <algorithm>
#include <stdexcept>

namespace kivcrash {
namespace {

constexpr int kDeepest = 4; // folders of a module's path that may lie below the one where files are looked for
constexpr std::uint32_t kPage = 0x1000;

std::uint32_t wholePages(std::uint32_t size) { return (size + kPage - 1) / kPage * kPage; }

/// Why the file is not the one that was loaded; empty where it is.
std::string faultOf(Image const & image, Module const & module) {
  if (image.timeStamp() != module.timeStamp)
    return "another build: its time stamp is " + hex(image.timeStamp(), 8) + ", that of the module that ran " +
           hex(module.timeStamp, 8);
  if (image.size() != module.size)
    return "another build: its size is " + hex(image.size()) + ", that of the module that ran " + hex(module.size);
  if (image.checkSum() != module.checkSum && image.checkSum() != 0 && module.checkSum != 0)
    return "another build: its check sum is " + hex(image.checkSum(), 8) + ", that of the module that ran " +
           hex(module.checkSum, 8);
  return "";
}

/// The same for a file of debug symbols, by its program or DLL.
std::string faultOfSymbols(Image const & symbols, Image const & image, Image::DebugLink const & link) {
  if (symbols.timeStamp() != image.timeStamp())
    return "debug symbols of another build: their time stamp is " + hex(symbols.timeStamp(), 8) +
           ", that of the module " + hex(image.timeStamp(), 8);
  if (symbols.sizeOfCode() != image.sizeOfCode())
    return "debug symbols of another build: they are for " + hex(symbols.sizeOfCode()) + " bytes, and the module has " +
           hex(image.sizeOfCode());
  if (std::uint32_t const sum = linkCheckSum(*symbols.bytes()); sum != link.checkSum)
    return "damaged, or debug symbols of another build: the check sum is " + hex(sum, 8) +
           ", and the module asks for " + hex(link.checkSum, 8);
  return symbols.hasDebugSymbols() ? "" : "there are no debug symbols in it";
}

/// The same by what the dump says of the module. The link to the symbols takes a page of its own.
std::string faultOfSymbols(Image const & symbols, Module const & module) {
  if (symbols.timeStamp() != module.timeStamp)
    return "debug symbols of another build: their time stamp is " + hex(symbols.timeStamp(), 8) +
           ", that of the module that ran " + hex(module.timeStamp, 8);
  std::uint32_t const size = wholePages(symbols.sizeOfCode());
  if (module.size != size && module.size != size + kPage && module.size != symbols.size())
    return "debug symbols of another build: they are for " + hex(size) + " bytes, and the module that ran had " +
           hex(module.size);
  return symbols.hasDebugSymbols() ? "" : "there are no debug symbols in it";
}

/// Anybody can write a path into a dump. One in the network would show its owner who reads the dump.
bool isOnDrive(std::filesystem::path const & path) {
  return path.is_absolute() && path.root_name().native().ends_with(L':');
}

/// Where debuggers look for it, too.
void addBothPlaces(std::vector<std::filesystem::path> & paths, std::filesystem::path const & folder,
                   std::filesystem::path const & name) {
  paths.push_back(folder / L".debug" / name);
  paths.push_back(folder / name);
}

} // namespace

/// A module in a folder "plugins" may lie in one of that name here.
ModuleFiles::Paths ModuleFiles::foldersOf(Module const & module) const {
  std::filesystem::path const original(toWide(module.path));
  Paths endings{L""};
  std::filesystem::path rest = original.parent_path();
  for (int i = 0; i < kDeepest && rest.has_filename(); ++i) {
    endings.push_back(rest.filename() / endings.back());
    rest = rest.parent_path();
  }
  Paths folders;
  for (auto const & folder : folders_)
    for (auto const & ending : endings)
      folders.push_back(folder / ending);
  if (isOnDrive(original))
    folders.push_back(original.parent_path());
  return folders;
}

FoundFile ModuleFiles::firstThatFits(Paths const & paths, Check const & check) {
  FoundFile found;
  Paths tried;
  for (auto const & path : paths) {
    auto const place = fullPath(path);
    if (std::ranges::find(tried, place) != tried.end() || !isFile(place))
      continue;
    tried.push_back(place);
    std::string reason;
    try {
      std::optional<Image> image = Image::read(std::make_shared<std::string const>(readWhole(place)), reason);
      if (image)
        reason = check(*image);
      if (image && reason.empty()) {
        found.image = std::move(image);
        found.path = place;
        return found;
      }
      found.others.push_back(toUtf8(place) + ": " + reason);
    } catch (std::runtime_error const & error) { // its text names the file
      found.others.emplace_back(error.what());
    }
  }
  return found;
}

FoundFile const & ModuleFiles::file(Module const & module) {
  auto const known = files_.find(module.base);
  if (known != files_.end())
    return known->second;
  Paths paths;
  for (auto const & folder : foldersOf(module))
    paths.push_back(folder / toWide(fileName(module.path)));
  return files_.emplace(module.base, firstThatFits(paths, [&](Image const & image) { return faultOf(image, module); }))
      .first->second;
}

FoundFile const & ModuleFiles::symbols(Module const & module) {
  auto const known = symbols_.find(module.base);
  return known != symbols_.end() ? known->second : symbols_.emplace(module.base, findSymbols(module)).first->second;
}

FoundFile ModuleFiles::findSymbols(Module const & module) {
  FoundFile const & program = file(module);
  FoundFile found;
  std::string reason;
  if (program.image && program.image->hasDebugSymbols()) {
    found.image = Image::read(program.image->bytes(), reason);
    found.path = program.path;
    return found;
  }
  std::optional<Image::DebugLink> const link = program.image ? program.image->debugLink() : std::nullopt;
  if (program.image && !link)
    return found; // no debug symbols were made for it
  std::filesystem::path const name = toWide(link ? link->name : std::string(fileName(module.path)) + ".debug");
  Paths paths;
  if (link)
    addBothPlaces(paths, program.path.parent_path(), name);
  for (auto const & folder : foldersOf(module))
    addBothPlaces(paths, folder, name);
  return firstThatFits(paths, [&](Image const & symbols) {
    return link ? faultOfSymbols(symbols, *program.image, *link) : faultOfSymbols(symbols, module);
  });
}

} // namespace kivcrash
