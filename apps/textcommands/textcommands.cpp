// textcommands.dll: a script plug-in for the modeler, with two commands that take the name of a text file.
//
//   CountLines FILE   how many lines it has
//   CountWords FILE   how many words there are between white space

#include "aplugin_exports.hpp"
#include "areader.hpp"
#include "scriptengine.hpp"

#include <cstring>
#include <memory>

using SV::String;

namespace {

struct Counts {
  int lines = 0;
  int words = 0;
};

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

int wordsIn(String const & line) {
  int words = 0;
  for (std::int32_t i = 0; i < line.Len(); ++i)
    words += !isSpace(line.charAt(i)) && (i == 0 || isSpace(line.charAt(i - 1)));
  return words;
}

/// False when the file cannot be read.
bool count(String const & file, Counts & counts) {
  std::unique_ptr<KivLineReader> const reader(new KivTextFileReader(file));
  if (!reader->Init())
    return false;
  for (String line; reader->GetLine(line); ++counts.lines)
    counts.words += wordsIn(line);
  return true;
}

struct Command {
  char const * name;
  int Counts::*result;
};
constexpr Command kCommands[] = {{"CountLines", &Counts::lines}, {"CountWords", &Counts::words}};

Command const * find(char const * name) {
  for (Command const & each : kCommands)
    if (std::strcmp(each.name, name) == 0)
      return &each;
  return nullptr;
}

bool execute(char const * name, KivLeoParser const & parser, KivScriptResult & result) {
  Command const * const command = find(name);
  Counts counts;
  if (command == nullptr || !count(parser.GetText(), counts))
    return false;
  result.SetText(String(counts.*command->result));
  return true;
}

} // namespace

KivPluginKivScriptExecutionType KivPluginFctKivScriptGetExecutionType() { return KIV_PLUGIN_KIVSCRIPT_BOTH; }

char const * KivPluginFctKivScriptGetMessagePortName() { return "TextCommands"; }

bool KivPluginFctKivScriptHandleRequestMsg(char const * command, KivLeoParser & parser, KivMessage * message) {
  return message != nullptr && execute(command, parser, *message);
}

bool KivPluginFctKivScriptHandleRequestDirect(char const * command, KivLeoParser & parser, KivScriptResult & result) {
  return execute(command, parser, result);
}

bool KivPluginFctKivScriptIsCommandExisting(char const * command) { return find(command) != nullptr; }

void KivPluginFctKivScriptGetAllCommands(String & out, char separator) {
  for (Command const & each : kCommands) {
    if (out.Len() > 0)
      out += separator;
    out += each.name;
  }
}
