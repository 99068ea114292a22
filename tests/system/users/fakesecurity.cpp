#include "fakesecurity.hpp"

#include "support/imports/import_hook.hpp"

#define SECURITY_WIN32
#include <sspi.h>

#include <secext.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace kivtest {
namespace {

FakeSecurity * theFake = nullptr;

std::string number(std::uint64_t value) { return std::to_string(value); }

BOOL succeeds(std::string const & call, long usual = 0) {
  long const code = theFake->note(call, usual);
  SetLastError(static_cast<DWORD>(code));
  return code == 0;
}

// The account of the process

BOOL openToken(std::string const & call, HANDLE * token) {
  if (!succeeds(call))
    return FALSE;
  *token = theFake->newHandle();
  theFake->openTokens.insert(*token);
  return TRUE;
}

BOOL WINAPI openThreadToken(HANDLE thread, DWORD access, BOOL asSelf, HANDLE * token) {
  return openToken("thread token " + number(access) + (asSelf ? " as self" : "") +
                       (thread == GetCurrentThread() ? "" : " of another"),
                   token);
}

BOOL WINAPI openProcessToken(HANDLE process, DWORD access, HANDLE * token) {
  return openToken("process token " + number(access) + (process == GetCurrentProcess() ? "" : " of another"), token);
}

BYTE const kSid[] = {1, 1, 0, 0, 0, 0, 0, 5, 18, 0, 0, 0};

BOOL WINAPI getTokenInformation(HANDLE token, TOKEN_INFORMATION_CLASS kind, void * record, DWORD size, DWORD * needed) {
  constexpr std::size_t kNeeded = sizeof(TOKEN_USER) + sizeof kSid;
  std::string const what = record == nullptr ? "size" : "record";
  *needed = static_cast<DWORD>(kNeeded);
  if (!succeeds("token " + what + ' ' + number(kind) + (theFake->openTokens.count(token) == 1 ? "" : " of another"),
                record == nullptr ? ERROR_INSUFFICIENT_BUFFER : 0))
    return FALSE;
  if (record == nullptr)
    return TRUE;
  if (size != *needed || HeapSize(GetProcessHeap(), 0, record) < size)
    theFake->note("token record without room");
  auto * const user = static_cast<TOKEN_USER *>(record);
  user->User.Sid = user + 1;
  std::memcpy(user->User.Sid, kSid, sizeof kSid);
  return TRUE;
}

BOOL WINAPI lookupAccountSid(char const * system, void * sid, char * name, DWORD * nameSize, char * domain,
                             DWORD * domainSize, SID_NAME_USE * use) {
  bool const isOurs = std::memcmp(sid, kSid, sizeof kSid) == 0;
  if (!succeeds("lookup " + number(*nameSize) + ' ' + number(*domainSize) + (system == nullptr ? " here" : " there") +
                (isOurs ? "" : " of another")))
    return FALSE;
  std::strcpy(name, theFake->user.c_str());
  std::strcpy(domain, theFake->domain.c_str());
  *use = SidTypeUser;
  return TRUE;
}

BOOLEAN WINAPI getUserNameEx(EXTENDED_NAME_FORMAT format, char * name, ULONG * size) {
  if (!succeeds("name " + number(format) + ' ' + number(*size)))
    return FALSE;
  std::strcpy(name, theFake->principal.c_str());
  return TRUE;
}

// Logging on

BOOL WINAPI logOn(char * user, char * domain, char * password, DWORD kind, DWORD provider, HANDLE * session) {
  if (!succeeds(std::string("log on ") + user + ' ' + domain + ' ' + password + ' ' + number(kind) + ' ' +
                number(provider)))
    return FALSE;
  *session = theFake->newHandle();
  theFake->openTokens.insert(*session);
  return TRUE;
}

// The authentication

void * idOf(SecHandle const * handle) { return reinterpret_cast<void *>(handle->dwLower); }

SECURITY_STATUS WINAPI queryPackage(char * name, SecPkgInfoA ** info) {
  static SecPkgInfoA record;
  long const status = theFake->note(std::string("package ") + name);
  if (status != SEC_E_OK)
    return status;
  record.cbMaxToken = theFake->largestToken;
  *info = &record;
  ++theFake->infos;
  return status;
}

SECURITY_STATUS WINAPI freeBuffer(void *) {
  --theFake->infos;
  return SEC_E_OK;
}

std::string textOf(SEC_WINNT_AUTH_IDENTITY_A const & identity) {
  auto const text = [](unsigned char const * bytes, unsigned long size) {
    return std::string(reinterpret_cast<char const *>(bytes), size) + ' ';
  };
  return text(identity.User, identity.UserLength) + text(identity.Domain, identity.DomainLength) +
         text(identity.Password, identity.PasswordLength) + number(identity.Flags);
}

SECURITY_STATUS WINAPI acquire(char * principal, char * package, ULONG use, void * logon, void * identity,
                               SEC_GET_KEY_FN key, void * argument, CredHandle * credentials, TimeStamp *) {
  bool const isPlain = principal == nullptr && logon == nullptr && key == nullptr && argument == nullptr;
  std::string const who = identity != nullptr ? textOf(*static_cast<SEC_WINNT_AUTH_IDENTITY_A const *>(identity)) : "-";
  long const status =
      theFake->note(std::string("acquire ") + package + ' ' + number(use) + (isPlain ? " " : " more ") + who);
  if (status >= 0) {
    credentials->dwLower = reinterpret_cast<ULONG_PTR>(theFake->newHandle());
    theFake->credentials.insert(idOf(credentials));
  }
  return status;
}

/// A descriptor of one token, in words.
std::string textOf(SecBufferDesc const * sent) {
  if (sent == nullptr)
    return "-";
  SecBuffer const & buffer = *sent->pBuffers;
  if (sent->ulVersion != SECBUFFER_VERSION || sent->cBuffers != 1 || buffer.BufferType != SECBUFFER_TOKEN)
    return "another buffer";
  return std::string(static_cast<char const *>(buffer.pvBuffer), buffer.cbBuffer);
}

/// Where a token is to be written, there is room for the largest.
void write(SecBufferDesc * output, std::string const & token) {
  SecBuffer & buffer = *output->pBuffers;
  if (output->ulVersion != SECBUFFER_VERSION || output->cBuffers != 1 || buffer.BufferType != SECBUFFER_TOKEN ||
      buffer.cbBuffer != theFake->largestToken || theFake->blocks.count(buffer.pvBuffer) == 0)
    theFake->note("another room for the token");
  std::memcpy(buffer.pvBuffer, token.data(), token.size());
  buffer.cbBuffer = static_cast<unsigned long>(token.size());
  buffer.BufferType = SECBUFFER_DATA; // systems are known to do so
}

SECURITY_STATUS step(std::string const & call, CredHandle const * credentials, CtxtHandle const * former,
                     CtxtHandle * context, SecBufferDesc * output, std::string const & token) {
  long const status = theFake->note(call);
  if (theFake->credentials.count(idOf(credentials)) == 0 ||
      (former != nullptr && theFake->contexts.count(idOf(former)) == 0))
    theFake->note("what was given back already");
  if (status < 0)
    return status;
  if (former == nullptr) {
    context->dwLower = reinterpret_cast<ULONG_PTR>(theFake->newHandle());
    theFake->contexts.insert(idOf(context));
  } else {
    *context = *former;
  }
  write(output, token);
  return status;
}

SECURITY_STATUS WINAPI initialize(CredHandle * credentials, CtxtHandle * former, char * target, ULONG wishes, ULONG,
                                  ULONG representation, SecBufferDesc * sent, ULONG, CtxtHandle * context,
                                  SecBufferDesc * output, ULONG *, TimeStamp *) {
  std::string const call = std::string(former == nullptr ? "client begins " : "client goes on ") + textOf(sent) + ' ' +
                           number(wishes) + ' ' + number(representation) + (target == nullptr ? "" : " target");
  return step(call, credentials, former, context, output, former == nullptr ? "negotiate" : "authenticate");
}

SECURITY_STATUS WINAPI accept(CredHandle * credentials, CtxtHandle * former, SecBufferDesc * sent, ULONG wishes,
                              ULONG representation, CtxtHandle * context, SecBufferDesc * output, ULONG *,
                              TimeStamp *) {
  std::string const call = std::string(former == nullptr ? "server begins " : "server goes on ") + textOf(sent) + ' ' +
                           number(wishes) + ' ' + number(representation);
  return step(call, credentials, former, context, output, former == nullptr ? "challenge" : "");
}

SECURITY_STATUS WINAPI complete(CtxtHandle * context, SecBufferDesc * token) {
  return theFake->note("complete " +
                       std::string(static_cast<char const *>(token->pBuffers->pvBuffer), token->pBuffers->cbBuffer) +
                       (theFake->contexts.count(idOf(context)) == 1 ? "" : " of another"));
}

SECURITY_STATUS WINAPI deleteContext(CtxtHandle * context) {
  theFake->note(theFake->contexts.erase(idOf(context)) == 1 ? "delete context" : "delete another context");
  return SEC_E_OK;
}

SECURITY_STATUS WINAPI freeCredentials(CredHandle * credentials) {
  theFake->note(theFake->credentials.erase(idOf(credentials)) == 1 ? "free credentials" : "free other credentials");
  return SEC_E_OK;
}

// What holds all that

HMODULE WINAPI load(char const * name) {
  if (theFake->missing.count(name) != 0) {
    theFake->note(std::string("cannot load ") + name);
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
  }
  theFake->note(std::string("load ") + name);
  ++theFake->loaded;
  return LoadLibraryA(name);
}

BOOL WINAPI unload(HMODULE library) {
  theFake->note("unload");
  --theFake->loaded;
  return FreeLibrary(library);
}

BOOL WINAPI closeHandle(HANDLE handle) {
  theFake->note("close");
  return theFake->openTokens.erase(handle) == 1 || CloseHandle(handle);
}

void * WINAPI allocate(HANDLE heap, DWORD flags, SIZE_T size) {
  if (!succeeds("allocate " + number(size)))
    return nullptr;
  void * const block = HeapAlloc(heap, flags, size);
  theFake->blocks.insert(block);
  return block;
}

BOOL WINAPI release(HANDLE heap, DWORD flags, void * block) {
  theFake->blocks.erase(block);
  return HeapFree(heap, flags, block);
}

BOOL WINAPI version(OSVERSIONINFOA * record) {
  record->dwPlatformId = VER_PLATFORM_WIN32_NT;
  return std::sscanf(theFake->windows.c_str(), "%lu.%lu", &record->dwMajorVersion, &record->dwMinorVersion) == 2;
}

template <class Function> support::Replacement replacement(char const * name, Function * function) {
  return {name, reinterpret_cast<void *>(function)};
}

support::Replacement const kTaken[] = {replacement("OpenThreadToken", openThreadToken),
                                       replacement("OpenProcessToken", openProcessToken),
                                       replacement("GetTokenInformation", getTokenInformation),
                                       replacement("LookupAccountSidA", lookupAccountSid),
                                       replacement("GetUserNameExA", getUserNameEx),
                                       replacement("LogonUserA", logOn),
                                       replacement("AcceptSecurityContext", accept),
                                       replacement("AcquireCredentialsHandleA", acquire),
                                       replacement("CompleteAuthToken", complete),
                                       replacement("DeleteSecurityContext", deleteContext),
                                       replacement("FreeContextBuffer", freeBuffer),
                                       replacement("FreeCredentialsHandle", freeCredentials),
                                       replacement("InitializeSecurityContextA", initialize),
                                       replacement("QuerySecurityPackageInfoA", queryPackage)};

void * takeInstead(HMODULE, std::string_view name, void * function) {
  if (theFake->missing.count(std::string(name)) != 0)
    return nullptr;
  auto const * const found =
      std::find_if(std::begin(kTaken), std::end(kTaken), [name](auto const & each) { return name == each.name; });
  return found != std::end(kTaken) ? found->function : function;
}

} // namespace

FakeSecurity::FakeSecurity() {
  theFake = this;
  HMODULE const library = GetModuleHandleA("kivara.dll");
  support::replaceImports(library, "KERNEL32.dll",
                          {replacement("LoadLibraryA", load), replacement("FreeLibrary", unload),
                           replacement("CloseHandle", closeHandle), replacement("HeapAlloc", allocate),
                           replacement("HeapFree", release), replacement("GetVersionExA", version)});
  support::watchLateImports(library, takeInstead);
}

FakeSecurity::~FakeSecurity() = default;

std::size_t FakeSecurity::count(std::string const & word) const {
  return static_cast<std::size_t>(
      std::count_if(calls.begin(), calls.end(), [&word](auto const & call) { return call.starts_with(word); }));
}

long FakeSecurity::note(std::string const & call, long usual) {
  calls.push_back(call);
  for (auto & [word, codes] : results)
    if (call.starts_with(word) && !codes.empty()) {
      long const code = codes.front();
      codes.pop_front();
      return code;
    }
  return usual;
}

} // namespace kivtest
