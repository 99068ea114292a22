#pragma once
/// \file
/// Sees which functions of other DLLs a module of this process calls, in which order and with what. A child program
/// uses it to record what the library does on its behalf, and to let a call of the system fail that cannot be made to.
///
///     support::spyOnImport("kivara.dll", "MessageBoxA", [](support::SpiedCall const & call) {
///       record("box: " + std::string(call.text(1)));
///     });
///
/// A spy stays for the rest of the process. It is called on the calling thread right before the function. It must not
/// throw.

#include <cstdint>
#include <functional>

namespace support {

/// The first four arguments as they were passed: integers and pointers only. An operation of an object has the object
/// first; a result that is a class comes as a pointer before all of them. The function receives what the spy leaves in
/// them.
struct SpiedCall {
  std::uintptr_t arguments[4];

  char const * text(int index) const { return reinterpret_cast<char const *>(arguments[index]); }
};

using Spy = std::function<void(SpiedCall &)>;

/// \param module    the file name of a loaded DLL; null is the program
/// \param function  the name of a C function to the letter; of a C++ function without its scopes and arguments, or mangled
///                  One of a DLL that the module loads late is seen unless the module has called it before
/// \return false when the module imports no such function
bool spyOnImport(char const * module, char const * function, Spy spy);

} // namespace support
