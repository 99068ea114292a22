#pragma once
/// \file
/// Who is at work: a stored database account, the Windows account of this process, and whether an account is good.
///
/// \code
///   KivDBUserUtils account; // "adbuser.txt" beside the program
///   if (account.IsExternalDefined())
///     connect(account.GetDBUserName(""), account.GetDBUserPassword(""));
///
///   SV::String user, domain;
///   if (Kiv_GetCurrentUserAndDomain(user, domain))
///     greet(user, domain);
/// \endcode
///
/// docs/users.md describes the files, how to make them, and what the answers do and do not prove.

#include "export.hpp"
#include "tools/string.hpp"

#include <cstdio>

/// A database account in a file of one line, which the tool `kivuser` writes and checks.
///
/// The file is read by the constructor and stays open until the destructor. It holds less than 4096 bytes: the AES text form
/// of KivEncryption (type 2) of three lines, separated by line feeds. The first line is kept and never given out, the second
/// is the name, the third the password.
///
/// A file with any other content leaves all three empty, and nothing reports it: a line feed after the line, a second
/// line, two or four lines in the text, or digits that are damaged so that they cannot be decrypted. Damage that can be
/// decrypted may give any other text. Only lack of memory throws. Main thread, like KivEncryption.
class KIV_API KivDBUserUtils {
public:
  /// Reads "adbuser.txt" in the program's folder. If it cannot be opened, there is no account, which is not reported.
  KivDBUserUtils();

  /// Reads that file. If it cannot be opened, there is no account, and the debug output says so. Null counts as the empty name.
  explicit KivDBUserUtils(char const * file);

  KivDBUserUtils(KivDBUserUtils const &) = delete;
  KivDBUserUtils & operator=(KivDBUserUtils const &) = delete;
  ~KivDBUserUtils();

  /// Whether the file was opened. Its content may still be unusable: then name and password are empty.
  bool IsExternalDefined() { return file != nullptr; }

  /// The stored texts; the argument is ignored.
  SV::String GetDBUserName(SV::String const &) { return name_; }
  SV::String GetDBUserPassword(SV::String const &) { return password_; }

private:
  KivDBUserUtils(char const * name, char const * mode);
  void read();

  FILE * file;       ///< null where it could not be opened
  SV::String first_; ///< the first line
  SV::String name_;
  SV::String password_;
};

/// The Windows account of the calling thread: of the one that it impersonates, otherwise of the process.
///
/// The system is asked once in a process; as soon as a user was found, later calls give the same strings and true, whatever
/// happened since. Two forms of the domain exist: the short one, such as "SALES", and the full one, such as
/// "sales.example.com". The full one is given when an option begins with "getfulldomainname", or when "login.ini" in the
/// program's folder has the line "getfulldomainname=1". Once read, that file stays open; with the option it is not
/// read.
///
/// \param user    the name without the domain
/// \param domain  the name of the computer for a local account. In the full form what follows the first '@' of the
///                account's principal name, up to another one; empty without an '@'
/// \return false when the account cannot be found. Both strings are then empty, except when only the full domain is missing:
///         \p user is then the user, and **the next call returns true** with an empty domain
///
/// Call KivCmdline::init first: before that the option is an internal error. The first call is for the main thread, since
/// nothing is locked; later calls belong there too, since all of them share these strings. Each search writes
/// "[kivdll]" lines and "[alu] Using domain ..." to the debug output. Only lack of memory throws.
KIV_API bool Kiv_GetCurrentUserAndDomain(SV::String & user, SV::String & domain);

/// Whether the system accepts an account with this password. The caller gets no session.
///
/// Windows XP and later try a logon over the network; its handle is never closed, so each success costs one. Older systems
/// carry out an NTLM authentication with themselves, and write to the debug output which call failed.
///
/// \param user, domain, password  in the system's ANSI code page, not changed. An empty domain leaves the choice to the
///                                system. Null gives false
/// \return true for a good account. False for a wrong password, for an account that may not log on in this way, and also
///         when the system could not be asked: the two cannot be told apart
///
/// Takes as long as the system does, with a slow domain some seconds. A refusal counts as a failed logon where those
/// are counted. Any thread. Only lack of memory throws.
KIV_API bool Kiv_LU(char * user, char * domain, char * password);
