#pragma once
/// \file
/// What those who call text services and those who offer them agree on: the name of a service says what it does, its
/// input is a text, and its answer is a text without a NUL.

#include "tools/string.hpp"

class KivInputData {
public:
  SV::String text;
};
