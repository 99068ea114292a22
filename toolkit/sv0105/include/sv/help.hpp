#pragma once
/// \file
/// Help: the help file of the program.

#include "sv/export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

namespace SV {

/// The help file in use. Application::ChangeHelp installs one; when that is destroyed, none is installed.
class SV_API Help : public LinkHdl {
public:
  Help(); ///< without a file
  explicit Help(String const & fileName);
  Help(Help const &) = delete;
  Help & operator=(Help const &) = delete;
  ~Help() override;

  /// The name as given; empty by default. Whether the file exists is not checked. ChangeFileName returns the previous name.
  String const & GetFileName() const { return fileName_; }
  String ChangeFileName(String const & fileName);

  /// Opens the file with the program that the system has for it; a ".chm" file at the topic with that number, if it has one.
  /// False if that fails or there is no name.
  /// \param topic  0 for no particular one
  virtual bool Start(unsigned long topic = 0);

private:
  String fileName_;
};

} // namespace SV
