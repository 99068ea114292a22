#pragma once
/// \file
/// A database account, and the file that holds it.

#include <optional>
#include <string>

namespace kivuser {

/// In the system's ANSI code page, as the library gives them.
struct Account {
  std::string first; ///< kept in the file; nothing reads it
  std::string name;
  std::string password;
};

/// The whole content of the file.
/// \param reason  why there is none
std::optional<std::string> contentOf(Account const & account, std::string & reason);

/// The account that the library finds in a file of these bytes.
/// \param reason  why it finds none, or why what it finds is damaged for sure
std::optional<Account> accountIn(std::string const & bytes, std::string & reason);

} // namespace kivuser
