#pragma once
/// \file
/// The files of the modules that were loaded, and of their debug symbols, on this machine.

#include "crash/dump.hpp"
#include "modules/image.hpp"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kivcrash {

/// The file of a module, or of its debug symbols.
struct FoundFile {
  std::optional<Image> image;      ///< nothing where no file fits
  std::filesystem::path path;      ///< its place
  std::vector<std::string> others; ///< files of that name that were not used, each with the reason
};

/// Files are looked for once, and stay in memory.
class ModuleFiles {
public:
  /// \param folders  where files are looked for, in this order; then where they were on the machine that failed, if that was
  ///                 on a drive
  explicit ModuleFiles(std::vector<std::filesystem::path> folders) : folders_(std::move(folders)) {}

  /// The program or DLL; one of another build is not used.
  FoundFile const & file(Module const & module);

  /// The file with its debug symbols: the module itself, or the one that its link names. Without the module's file, one of
  /// its name and time.
  FoundFile const & symbols(Module const & module);

private:
  using Paths = std::vector<std::filesystem::path>;
  /// Why an image is not the one that is looked for; empty where it is.
  using Check = std::function<std::string(Image const &)>;

  Paths foldersOf(Module const & module) const;
  static FoundFile firstThatFits(Paths const & paths, Check const & check);
  FoundFile findSymbols(Module const & module);

  std::vector<std::filesystem::path> folders_;
  std::map<std::uint64_t, FoundFile> files_;   // by the module's address
  std::map<std::uint64_t, FoundFile> symbols_; // likewise
};

} // namespace kivcrash
