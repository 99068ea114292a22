#include "atools.hpp"

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>

using SV::String;

namespace {

std::map<std::string, long> const kNamedKeys = {
    {"LBUTTON", 1},   {"RBUTTON", 2},      {"CANCEL", 3},     {"MBUTTON", 4},     {"BACK", 8},       {"TAB", 9},
    {"CLEAR", 12},    {"RETURN", 13},      {"SHIFT", 16},     {"CONTROL", 17},    {"MENU", 18},      {"PAUSE", 19},
    {"CAPITAL", 20},  {"ESCAPE", 27},      {"CONVERT", 28},   {"NONCONVERT", 29}, {"ACCEPT", 30},    {"MODECHANGE", 31},
    {"SPACE", 32},    {"PRIOR", 33},       {"NEXT", 34},      {"END", 35},        {"HOME", 36},      {"LEFT", 37},
    {"UP", 38},       {"RIGHT", 39},       {"DOWN", 40},      {"SELECT", 41},     {"PRINT", 42},     {"EXECUTE", 43},
    {"SNAPSHOT", 44}, {"INSERT", 45},      {"DELETE", 46},    {"HELP", 47},       {"LWIN", 91},      {"RWIN", 92},
    {"APPS", 93},     {"NUMPAD0", 96},     {"NUMPAD1", 97},   {"NUMPAD2", 98},    {"NUMPAD3", 99},   {"NUMPAD4", 100},
    {"NUMPAD5", 101}, {"NUMPAD6", 102},    {"NUMPAD7", 103},  {"NUMPAD8", 104},   {"NUMPAD9", 105},  {"MULTIPLY", 106},
    {"ADD", 107},     {"SEPARATOR", 108},  {"SUBTRACT", 109}, {"DECIMAL", 110},   {"DIVIDE", 111},   {"F1", 112},
    {"F2", 113},      {"F3", 114},         {"F4", 115},       {"F5", 116},        {"F6", 117},       {"F7", 118},
    {"F8", 119},      {"F9", 120},         {"F10", 121},      {"F11", 122},       {"F12", 123},      {"F13", 124},
    {"F14", 125},     {"F15", 126},        {"F16", 127},      {"F17", 128},       {"F18", 129},      {"F19", 130},
    {"F20", 131},     {"F21", 132},        {"F22", 133},      {"F23", 134},       {"F24", 135},      {"NUMLOCK", 144},
    {"SCROLL", 145},  {"LSHIFT", 160},     {"RSHIFT", 161},   {"LCONTROL", 162},  {"RCONTROL", 163}, {"LMENU", 164},
    {"RMENU", 165},   {"PROCESSKEY", 229}, {"ATTN", 246},     {"CRSEL", 247},     {"EXSEL", 248},    {"EREOF", 249},
    {"PLAY", 250},    {"ZOOM", 251},       {"NONAME", 252},   {"PA1", 253},       {"OEM_CLEAR", 254}};

TEST(VirtualKey, HasTheSystemsNameAndCode) {
  EXPECT_EQ(kNamedKeys.size(), 95u);
  for (auto const & [name, key] : kNamedKeys)
    EXPECT_EQ(Kiv_GetVirtualKeyFromString(name.c_str()), key) << name;
}

TEST(VirtualKey, OfOtherNamesIsThatOfTheFirstCharacter) {
  for (int byte = 0; byte < 256; ++byte) {
    bool const isKey = byte <= '0' || (byte >= 'A' && byte <= 'Z');
    char const name[] = {static_cast<char>(byte), '\0'};
    EXPECT_EQ(Kiv_GetVirtualKeyFromString(name), isKey ? byte : -1) << byte;
  }
}

TEST(VirtualKey, DigitsFrom1OnAreNoKeysThough0Is) {
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("0"), 48);
  for (char const * name : {"1", "5", "9"})
    EXPECT_EQ(Kiv_GetVirtualKeyFromString(name), -1) << name;
}

TEST(VirtualKey, NamesCountWithTheirCaseAndAsAWhole) {
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("A"), 65);
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("a"), -1);
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("return"), -1);
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("Return"), 'R');
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("RETURNS"), 'R');
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("F25"), 'F');
  EXPECT_EQ(Kiv_GetVirtualKeyFromString("VK_RETURN"), 'V');
}

struct Keys {
  long code;
  long modifiers;
  bool operator==(Keys const &) const = default;
};
std::ostream & operator<<(std::ostream & out, Keys const & keys) { return out << keys.code << " + " << keys.modifiers; }

Keys keysOf(char const * names) {
  Keys keys{-7, -7};
  Kiv_GetSVKeysFromWinKeys(names, keys.code, keys.modifiers);
  return keys;
}

/// The window library's code of each virtual key that has one.
std::map<long, long> svCodes() {
  std::map<long, long> codes{{93, 1307}};
  for (long i = 0; i < 10; ++i)
    codes[48 + i] = codes[96 + i] = 256 + i;
  for (long i = 0; i < 26; ++i)
    codes[65 + i] = 512 + i;
  for (long i = 0; i < 24; ++i)
    codes[112 + i] = 768 + i;
  long code = 1024;
  for (long const key : {40, 38, 37, 39, 36, 35, 33, 34})
    codes[key] = code++;
  code = 1280;
  for (long const key : {13, 27, 9, 8, 32, 45, 46, 107, 109, 106, 111, 110, 108})
    codes[key] = code++;
  return codes;
}

long svCodeOf(long key) {
  static std::map<long, long> const codes = svCodes();
  auto const found = codes.find(key);
  return found != codes.end() ? found->second : 0;
}

TEST(SVKeys, OfNamedKeysAreThoseOfTheTable) {
  for (auto const & [name, key] : kNamedKeys) {
    bool const isModifier = name == "SHIFT" || name == "CONTROL" || name == "MENU";
    EXPECT_EQ(keysOf(name.c_str()).code, isModifier ? 0 : svCodeOf(key)) << name;
  }
}

TEST(SVKeys, OfLettersAreThoseOfTheTable) {
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    char const name[] = {letter, '\0'};
    EXPECT_EQ(keysOf(name), (Keys{512 + letter - 'A', 0}));
  }
}

TEST(SVKeys, OfCharactersBelowTheLettersAreThoseOfTheirCodes) {
  EXPECT_EQ(keysOf("0"), (Keys{256, 0}));
  EXPECT_EQ(keysOf("%"), (Keys{1026, 0})); // the code of LEFT
  EXPECT_EQ(keysOf("5"), (Keys{0, 0}));
}

TEST(SVKeys, ModifiersAreNumbersOfTheirOwn) {
  EXPECT_EQ(keysOf("SHIFT"), (Keys{0, 4096}));
  EXPECT_EQ(keysOf("CONTROL"), (Keys{0, 8192}));
  EXPECT_EQ(keysOf("MENU"), (Keys{0, 16384}));
  EXPECT_EQ(keysOf("CONTROL A"), (Keys{512, 8192}));
  EXPECT_EQ(keysOf("Z SHIFT MENU CONTROL"), (Keys{537, 28672}));
}

TEST(SVKeys, NamesThatRepeatCountOnce) { EXPECT_EQ(keysOf("SHIFT A SHIFT A"), (Keys{512, 4096})); }

TEST(SVKeys, AKeyThatBeginsTheNameOfAModifierIsAKeyOfItsOwn) {
  EXPECT_EQ(keysOf("CONTROL C"), (Keys{514, 8192}));
  EXPECT_EQ(keysOf("S SHIFT"), (Keys{530, 4096}));
  EXPECT_EQ(keysOf("MENU M"), (Keys{524, 16384}));
}

TEST(SVKeys, OfNothingAreNothing) {
  EXPECT_EQ(keysOf(""), (Keys{0, 0}));
  EXPECT_EQ(keysOf("   "), (Keys{0, 0}));
}

TEST(SVKeys, FurtherBlanksAreNoNames) { EXPECT_EQ(keysOf("  CONTROL   A "), (Keys{512, 8192})); }

TEST(SVKeys, TheFirstKeyInByteOrderCounts) {
  EXPECT_EQ(keysOf("Z B"), (Keys{513, 0}));
  EXPECT_EQ(keysOf("F2 F10"), (Keys{777, 0})); // "F10" is before "F2"
}

TEST(SVKeys, AKeyWithoutACodeStillIsTheFirst) {
  EXPECT_EQ(keysOf("PAUSE Z"), (Keys{0, 0}));
  EXPECT_EQ(keysOf("NUMLOCK SCROLL"), (Keys{0, 0}));
  EXPECT_EQ(keysOf("5 Z"), (Keys{0, 0}));
}

TEST(SVKeys, AKeyFrom146OnIsPassedOver) { EXPECT_EQ(keysOf("RSHIFT Z"), (Keys{537, 0})); }

} // namespace
