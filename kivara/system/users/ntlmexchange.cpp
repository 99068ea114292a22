#include "system/users/ntlmexchange.hpp"

#include "atrace.hpp"
#include "base/boundedtext.hpp"
#include "system/users/heapblock.hpp"

#define SECURITY_WIN32 // the interface for programs
#include <sspi.h>

namespace kivara {
namespace {

constexpr char kPackageName[] = "NTLM";

char * packageName() { return const_cast<char *>(kPackageName); } // the system only reads it

/// The functions of the system that take part; loaded as long as this object lives.
class SecurityLibrary {
  handles::Module const module_{LoadLibraryA("secur32.dll")};

  template <class Function> Function * function(char const * name) const {
    FARPROC const found = module_ ? GetProcAddress(module_.get(), name) : nullptr;
    return reinterpret_cast<Function *>(reinterpret_cast<void *>(found));
  }

public:
  /// Whether all functions except CompleteAuthToken, which may be missing, are there.
  bool isUsable() const {
    return acceptSecurityContext != nullptr && acquireCredentialsHandle != nullptr &&
           deleteSecurityContext != nullptr && freeContextBuffer != nullptr && freeCredentialsHandle != nullptr &&
           initializeSecurityContext != nullptr && querySecurityPackageInfo != nullptr;
  }

  /// The size of the largest token in bytes; 0 when the package is not available.
  unsigned long largestToken() const {
    SecPkgInfoA * info = nullptr;
    if (querySecurityPackageInfo(packageName(), &info) != SEC_E_OK)
      return 0;
    unsigned long const size = info->cbMaxToken;
    freeContextBuffer(info);
    return size;
  }

  decltype(::AcceptSecurityContext) * const acceptSecurityContext =
      function<decltype(::AcceptSecurityContext)>("AcceptSecurityContext");
  decltype(::AcquireCredentialsHandleA) * const acquireCredentialsHandle =
      function<decltype(::AcquireCredentialsHandleA)>("AcquireCredentialsHandleA");
  decltype(::CompleteAuthToken) * const completeAuthToken =
      function<decltype(::CompleteAuthToken)>("CompleteAuthToken");
  decltype(::DeleteSecurityContext) * const deleteSecurityContext =
      function<decltype(::DeleteSecurityContext)>("DeleteSecurityContext");
  decltype(::FreeContextBuffer) * const freeContextBuffer =
      function<decltype(::FreeContextBuffer)>("FreeContextBuffer");
  decltype(::FreeCredentialsHandle) * const freeCredentialsHandle =
      function<decltype(::FreeCredentialsHandle)>("FreeCredentialsHandle");
  decltype(::InitializeSecurityContextA) * const initializeSecurityContext =
      function<decltype(::InitializeSecurityContextA)>("InitializeSecurityContextA");
  decltype(::QuerySecurityPackageInfoA) * const querySecurityPackageInfo =
      function<decltype(::QuerySecurityPackageInfoA)>("QuerySecurityPackageInfoA");
};

/// What one side sends to the other.
class Token {
public:
  bool allocate(unsigned long capacity) {
    block_ = heapBlock(capacity);
    capacity_ = capacity;
    return static_cast<bool>(block_);
  }

  /// For a call that writes it.
  SecBuffer writable() const { return {capacity_, SECBUFFER_TOKEN, block_.get()}; }
  /// For a call that reads it.
  SecBuffer written() const { return {size_, SECBUFFER_TOKEN, block_.get()}; }
  void setSize(unsigned long size) { size_ = size; }

private:
  HeapBlock block_;
  unsigned long capacity_ = 0;
  unsigned long size_ = 0;
};

/// Writes the failure to the debug output, and returns it.
SECURITY_STATUS reported(char const * function, SECURITY_STATUS status) {
  KivDebugOut(BoundedText<128>("[alu] %s failed with %08X\n", function, static_cast<unsigned>(status)).c_str());
  return status;
}

bool isFailure(SECURITY_STATUS status) { return status < 0; }

bool needsCompletion(SECURITY_STATUS status) {
  return status == SEC_I_COMPLETE_NEEDED || status == SEC_I_COMPLETE_AND_CONTINUE;
}

bool isLast(SECURITY_STATUS status) { return status == SEC_E_OK || status == SEC_I_COMPLETE_NEEDED; }

/// One side, with its credentials and its context, which are given back with it.
class Side {
public:
  Side(SecurityLibrary const & library, Token & token) : library_(library), token_(token) {}
  Side(Side const &) = delete;
  Side & operator=(Side const &) = delete;
  ~Side() {
    if (hasContext_)
      library_.deleteSecurityContext(&context_);
    if (hasCredentials_)
      library_.freeCredentialsHandle(&credentials_);
  }

protected:
  /// What one call of the system gets.
  struct Call {
    CtxtHandle * former; ///< null in the first step
    CtxtHandle * context;
    SecBufferDesc * input; ///< null for none
    SecBufferDesc * output;
  };

  /// Once; a further call does nothing.
  SECURITY_STATUS acquire(unsigned long use, SEC_WINNT_AUTH_IDENTITY_A * identity) {
    if (hasCredentials_)
      return SEC_E_OK;
    TimeStamp expiry;
    SECURITY_STATUS const status = library_.acquireCredentialsHandle(nullptr, packageName(), use, nullptr, identity,
                                                                     nullptr, nullptr, &credentials_, &expiry);
    hasCredentials_ = !isFailure(status);
    return hasCredentials_ ? status : reported("AcquireCredentialsHandle", status);
  }

  /// Reads what the other side has sent, if anything, and writes this side's token.
  template <class Function> SECURITY_STATUS take(char const * name, Token const * sent, Function const & function) {
    SecBuffer read = sent != nullptr ? sent->written() : SecBuffer();
    SecBufferDesc input = {SECBUFFER_VERSION, 1, &read};
    SecBuffer written = token_.writable();
    SecBufferDesc output = {SECBUFFER_VERSION, 1, &written};
    SECURITY_STATUS const status =
        function(Call{hasContext_ ? &context_ : nullptr, &context_, sent != nullptr ? &input : nullptr, &output});
    if (isFailure(status))
      return reported(name, status);
    hasContext_ = true;
    if (needsCompletion(status) && !complete(output))
      return SEC_E_UNSUPPORTED_FUNCTION;
    token_.setSize(written.cbBuffer);
    return status;
  }

  SecurityLibrary const & library_;
  CredHandle credentials_ = {};

private:
  bool complete(SecBufferDesc & output) {
    if (library_.completeAuthToken == nullptr) {
      KivDebugOut("[alu] CompleteAuthToken not supported.\n");
      return false;
    }
    SECURITY_STATUS const status = library_.completeAuthToken(&context_, &output);
    if (isFailure(status))
      reported("CompleteAuthToken", status);
    return !isFailure(status);
  }

  Token & token_;
  CtxtHandle context_ = {};
  bool hasCredentials_ = false;
  bool hasContext_ = false;
};

class Client : public Side {
public:
  using Side::Side;

  SECURITY_STATUS step(SEC_WINNT_AUTH_IDENTITY_A & identity, Token const * sent) {
    SECURITY_STATUS const status = acquire(SECPKG_CRED_OUTBOUND, &identity);
    if (isFailure(status))
      return status;
    return take("InitializeSecurityContext", sent, [this](Call const & call) {
      ULONG attributes = 0;
      TimeStamp expiry;
      return library_.initializeSecurityContext(&credentials_, call.former, nullptr, 0, 0, SECURITY_NATIVE_DREP,
                                                call.input, 0, call.context, call.output, &attributes, &expiry);
    });
  }
};

class Server : public Side {
public:
  using Side::Side;

  SECURITY_STATUS step(Token const & sent) {
    SECURITY_STATUS const status = acquire(SECPKG_CRED_INBOUND, nullptr);
    if (isFailure(status))
      return status;
    return take("AcceptSecurityContext", &sent, [this](Call const & call) {
      ULONG attributes = 0;
      TimeStamp expiry;
      return library_.acceptSecurityContext(&credentials_, call.former, call.input, 0, SECURITY_NATIVE_DREP,
                                            call.context, call.output, &attributes, &expiry);
    });
  }
};

SEC_WINNT_AUTH_IDENTITY_A identityOf(char * user, char * domain, char * password) {
  auto const bytes = [](char * text) { return reinterpret_cast<unsigned char *>(text); };
  auto const length = [](char const * text) { return static_cast<unsigned long>(lstrlenA(text)); };
  return {bytes(user),
          length(user),
          bytes(domain),
          length(domain),
          bytes(password),
          length(password),
          SEC_WINNT_AUTH_IDENTITY_ANSI};
}

} // namespace

bool passesNtlm(char * user, char * domain, char * password) {
  SecurityLibrary const library;
  unsigned long const size = library.isUsable() ? library.largestToken() : 0;
  Token fromClient;
  Token fromServer;
  if (size == 0 || !fromClient.allocate(size) || !fromServer.allocate(size))
    return false;
  SEC_WINNT_AUTH_IDENTITY_A identity = identityOf(user, domain, password);
  Client client(library, fromClient);
  Server server(library, fromServer);
  // Negotiate, challenge, authenticate, verify. A server that wants to hear more has not verified anything yet.
  return !isFailure(client.step(identity, nullptr)) && !isFailure(server.step(fromClient)) &&
         !isFailure(client.step(identity, &fromServer)) && isLast(server.step(fromClient));
}

} // namespace kivara
