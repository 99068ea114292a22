#pragma once
/// \file
/// Help: the help file of the program.

#include "sv/export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

namespace SV {

/// The help file in use. Application::ChangeHelp installs one; an installed one that dies leaves none installed.
class SV_API Help : public LinkHdl {
public:
  Help(); ///< without a file
  explicit Help(String const & fileName);
  Help(Help const &) = delete;
  Help & operator=(Help const &) = delete;
  ~Help() override;

  /// The name as given, empty at first; the change gives the former one. Whether the file is there is not looked at.
  String const & GetFileName() const { return fileName_; }
  String ChangeFileName(String const & fileName);

  /// Opens the file with the program that the system has for it; a ".chm" file at a topic, as far as it has one of that
  /// number. False when that cannot be done, or without a name.
  /// \param topic  0: none in particular
  virtual bool Start(unsigned long topic = 0);

private:
  String fileName_;
};

} // namespace SV
