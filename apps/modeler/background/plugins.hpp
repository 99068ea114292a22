#pragma once
/// \file
/// The plug-ins of the program, and what they offer.

#include "background/journal.hpp"
#include "background/startfacts.hpp"

namespace modeler {

/// Loaded once, and there to the end of the program.
class Plugins {
public:
  /// Loads what lies in the folder "plugins" below the program and notes each plug-in in the journal.
  void Load(Journal & journal);

  /// Each plug-in with its name, kind and file, in the current language; one that says so where there is none.
  ISequence<Fact> Facts() const;

  /// The commands of all script plug-ins in the order of loading.
  ISequence<SV::String> const & Commands() const { return commands_; }

  /// Has the first plug-in that knows the command execute it.
  /// \param argument  what follows the command
  /// \param answer    receives its result
  /// \return false when no plug-in has executed it
  bool Execute(SV::String const & command, SV::String const & argument, SV::String & answer) const;

private:
  struct Entry {
    SV::String name;
    SV::String kind;
    SV::String file;
  };

  ISequence<Entry> entries_;
  ISequence<SV::String> commands_;
};

} // namespace modeler
