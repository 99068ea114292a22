#pragma once
/// \file
/// WinHTTP as the library calls it, with calls that are written down and results that a test chooses. There is no network
/// behind it. URLs are taken apart by the real one.

#include "tools/winapi.hpp"

#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kivtest {

/// The calls go to this object while it lives; one at a time.
class FakeWinHttp {
public:
  FakeWinHttp();
  FakeWinHttp(FakeWinHttp const &) = delete;
  FakeWinHttp & operator=(FakeWinHttp const &) = delete;
  ~FakeWinHttp();

  static FakeWinHttp & current();

  /// In their order, each with its arguments: "connect host 80".
  std::vector<std::string> calls;
  /// Those that begin with one of the words.
  std::vector<std::string> callsOf(std::vector<std::string> const & words) const;

  /// For each word that a call begins with ("send", "option 38") the codes with which the next such calls fail; 0 is a
  /// success, as are all after the last one.
  std::map<std::string, std::deque<DWORD>> failures;

  /// What the user's proxy settings say; nothing is null.
  struct UserProxy {
    bool autoDetect = false;
    wchar_t const * script = nullptr;
    wchar_t const * proxy = nullptr;
    wchar_t const * bypass = nullptr;
  } user;
  /// What the script answers.
  UserProxy script;

  std::wstring header = L"HTTP/1.1 200 OK\r\n\r\n";
  std::wstring status = L"200";
  std::deque<std::string> parts;      ///< of the body
  std::size_t mostPerRead = SIZE_MAX; ///< a read gives no more than that
  std::deque<DWORD> availableInstead; ///< amounts that are reported, without any bytes behind them

  std::set<void *> openHandles;
  std::set<void *> openTexts; ///< that the system allocated for the caller

  /// Writes the call down and returns whether it succeeds.
  bool note(std::string const & call);
  void * newHandle(std::string const & what);
  std::string nameOf(void * handle) const;
  wchar_t * newText(wchar_t const * text);

private:
  std::map<void *, std::string> names_;
};

} // namespace kivtest
