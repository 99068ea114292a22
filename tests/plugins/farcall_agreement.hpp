#pragma once
/// \file
/// What the test of far calls and its DLL agree on: the input, and the names of the services.

class KivInputData {
public:
  int number;             ///< what to do, see the services
  char const * text = ""; ///< for the services that read one
};

/// \name Services of farcall_service.dll
/// @{
inline constexpr char kEcho[] = "test.echo";       ///< the text, without its NUL
inline constexpr char kEmpty[] = "test.empty";     ///< an empty buffer
inline constexpr char kThrows[] = "test.throws";   ///< throws the number
inline constexpr char kLast[] = "test.lastblock";  ///< the address of the block that kEcho answered with last
inline constexpr char kNested[] = "test.callback"; ///< calls kOfProgram and answers with its block
/// @}

/// A service of the test program, which gives its number and one more.
inline constexpr char kOfProgram[] = "test.ofprogram";
