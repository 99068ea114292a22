#pragma once
/// \file
/// What the sources of the program crash_ways share.

namespace kivtest {

void say(char const * text, unsigned long value);

/// The fault that most tests take.
void readNowhere();

/// On a thread of the system's own, since those of the library may stop what leaves them.
void onThread(void (*work)());

/// Does what the word says; nothing where it says nothing.
void act(char const * word);

/// The words of crash_deaths.cpp.
void die(char const * word);

} // namespace kivtest
