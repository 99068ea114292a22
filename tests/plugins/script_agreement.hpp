#pragma once
/// \file
/// What the tests of plug-ins and their script plug-in agree on: classes of a script engine as a product would have one.

class KivLeoParser {
public:
  bool answer; ///< what the plug-in is to answer
};

class KivMessage {
public:
  char const * command;
  KivLeoParser * parser;
};

/// Receives what the plug-in was called with.
class KivScriptResult {
public:
  char const * command = nullptr;
  KivLeoParser * parser = nullptr;
};
