#pragma once
/// \file
/// What the modeler and its script plug-ins agree on: the classes of its script engine. Both sides include this very header.

#include "tools/string.hpp"

/// What follows a command: for the commands of the menu the file of the model that was opened last, empty without one.
class KivLeoParser {
public:
  explicit KivLeoParser(SV::String const & text) : text_(text) {}

  SV::String const & GetText() const { return text_; }

private:
  SV::String text_;
};

/// Receives the result of a command that is executed directly.
class KivScriptResult {
public:
  void SetText(SV::String const & text) { text_ = text; }
  SV::String const & GetText() const { return text_; }

private:
  SV::String text_;
};

/// A request by message, which receives the result too.
class KivMessage : public KivScriptResult {};
