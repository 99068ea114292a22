#include "atools.hpp"
#include "tools/winapi.hpp"

#include <set>

using SV::String;

namespace {

struct NamedKey {
  char const * name;
  long key;
};

#define KEY(name)                                                                                                      \
  { #name, VK_##name }
constexpr NamedKey kKeys[] = {
    KEY(LBUTTON),   KEY(RBUTTON),    KEY(CANCEL),   KEY(MBUTTON),    KEY(BACK),     KEY(TAB),      KEY(CLEAR),
    KEY(RETURN),    KEY(SHIFT),      KEY(CONTROL),  KEY(MENU),       KEY(PAUSE),    KEY(CAPITAL),  KEY(ESCAPE),
    KEY(CONVERT),   KEY(NONCONVERT), KEY(ACCEPT),   KEY(MODECHANGE), KEY(SPACE),    KEY(PRIOR),    KEY(NEXT),
    KEY(END),       KEY(HOME),       KEY(LEFT),     KEY(UP),         KEY(RIGHT),    KEY(DOWN),     KEY(SELECT),
    KEY(PRINT),     KEY(EXECUTE),    KEY(SNAPSHOT), KEY(INSERT),     KEY(DELETE),   KEY(HELP),     KEY(LWIN),
    KEY(RWIN),      KEY(APPS),       KEY(NUMPAD0),  KEY(NUMPAD1),    KEY(NUMPAD2),  KEY(NUMPAD3),  KEY(NUMPAD4),
    KEY(NUMPAD5),   KEY(NUMPAD6),    KEY(NUMPAD7),  KEY(NUMPAD8),    KEY(NUMPAD9),  KEY(MULTIPLY), KEY(ADD),
    KEY(SEPARATOR), KEY(SUBTRACT),   KEY(DECIMAL),  KEY(DIVIDE),     KEY(F1),       KEY(F2),       KEY(F3),
    KEY(F4),        KEY(F5),         KEY(F6),       KEY(F7),         KEY(F8),       KEY(F9),       KEY(F10),
    KEY(F11),       KEY(F12),        KEY(F13),      KEY(F14),        KEY(F15),      KEY(F16),      KEY(F17),
    KEY(F18),       KEY(F19),        KEY(F20),      KEY(F21),        KEY(F22),      KEY(F23),      KEY(F24),
    KEY(NUMLOCK),   KEY(SCROLL),     KEY(LSHIFT),   KEY(RSHIFT),     KEY(LCONTROL), KEY(RCONTROL), KEY(LMENU),
    KEY(RMENU),     KEY(PROCESSKEY), KEY(ATTN),     KEY(CRSEL),      KEY(EXSEL),    KEY(EREOF),    KEY(PLAY),
    KEY(ZOOM),      KEY(NONAME),     KEY(PA1),      KEY(OEM_CLEAR)};
#undef KEY

/// Consecutive virtual keys, whose codes in the window library are consecutive too, beginning with \p code.
struct KeyRun {
  long first;
  long last;
  long code;
};

constexpr KeyRun kRuns[] = {{'0', '9', 256},
                            {VK_NUMPAD0, VK_NUMPAD9, 256},
                            {'A', 'Z', 512},
                            {VK_F1, VK_F24, 768},
                            {VK_DOWN, VK_DOWN, 1024},
                            {VK_UP, VK_UP, 1025},
                            {VK_LEFT, VK_LEFT, 1026},
                            {VK_RIGHT, VK_RIGHT, 1027},
                            {VK_HOME, VK_HOME, 1028},
                            {VK_END, VK_END, 1029},
                            {VK_PRIOR, VK_NEXT, 1030},
                            {VK_RETURN, VK_RETURN, 1280},
                            {VK_ESCAPE, VK_ESCAPE, 1281},
                            {VK_TAB, VK_TAB, 1282},
                            {VK_BACK, VK_BACK, 1283},
                            {VK_SPACE, VK_SPACE, 1284},
                            {VK_INSERT, VK_DELETE, 1285},
                            {VK_ADD, VK_ADD, 1287},
                            {VK_SUBTRACT, VK_SUBTRACT, 1288},
                            {VK_MULTIPLY, VK_MULTIPLY, 1289},
                            {VK_DIVIDE, VK_DIVIDE, 1290},
                            {VK_DECIMAL, VK_DECIMAL, 1291},
                            {VK_SEPARATOR, VK_SEPARATOR, 1292},
                            {VK_APPS, VK_APPS, 1307}};

/// Keys from here on have no code; a later name of the same combination may still give one.
constexpr long kFirstWithoutCode = 146;

long codeOf(long key) {
  for (KeyRun const & run : kRuns)
    if (key >= run.first && key <= run.last)
      return run.code + (key - run.first);
  return 0;
}

long modifierOf(String const & name) {
  if (name == "SHIFT")
    return 4096;
  if (name == "CONTROL")
    return 8192;
  return name == "MENU" ? 16384 : 0;
}

} // namespace

long Kiv_GetVirtualKeyFromString(String const & name) {
  for (NamedKey const & each : kKeys)
    if (name == each.name)
      return each.key;
  // '0' is a key and the other digits are not: key tables written by hand rely on it.
  auto const first = static_cast<unsigned char>(name.charAt(0));
  return (first >= 'A' && first <= 'Z') || first <= '0' ? first : -1;
}

void Kiv_GetSVKeysFromWinKeys(String const & keys, long & keyCode, long & modifiers) {
  keyCode = 0;
  modifiers = 0;
  ISequence<String> names;
  Kiv_SplitIntoTokens(keys, ' ', names);
  bool hasKey = false;
  for (String const & name : std::set<String>(names.begin(), names.end())) {
    long const modifier = modifierOf(name);
    modifiers += modifier;
    if (modifier != 0 || hasKey || name.Len() == 0)
      continue;
    long const key = Kiv_GetVirtualKeyFromString(name);
    hasKey = key < kFirstWithoutCode;
    if (hasKey)
      keyCode = codeOf(key);
  }
}
