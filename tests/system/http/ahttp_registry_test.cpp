// Settings of the user that all programs share: proxies and authorities. These tests write them and take them back.

#include "httpclient.hpp"

#include "support/data/files.hpp"
#include "support/harness/wine.hpp"
#include "support/imports/import_spy.hpp"
#include "tools/winapi.hpp"

#include <wincrypt.h>
#include <winhttp.h>

#include <gtest/gtest.h>

#include <optional>
#include <vector>

using namespace kivtest;

namespace {

// Certificates

/// Makes the authority of the tests one that the user trusts. Each store is opened for one change only: what is changed
/// is seen by others when it is closed.
class TrustedAuthority {
public:
  TrustedAuthority() {
    HCERTSTORE const store = openStore();
    EXPECT_TRUE(CertAddEncodedCertificateToStore(store, X509_ASN_ENCODING, bytes(), size(),
                                                 CERT_STORE_ADD_REPLACE_EXISTING, nullptr));
    CertCloseStore(store, 0);
  }
  TrustedAuthority(TrustedAuthority const &) = delete;
  TrustedAuthority & operator=(TrustedAuthority const &) = delete;
  ~TrustedAuthority() {
    HCERTSTORE const store = openStore();
    CERT_CONTEXT const * const wanted = CertCreateCertificateContext(X509_ASN_ENCODING, bytes(), size());
    CERT_CONTEXT const * const found =
        CertFindCertificateInStore(store, X509_ASN_ENCODING, 0, CERT_FIND_EXISTING, wanted, nullptr);
    EXPECT_TRUE(found != nullptr && CertDeleteCertificateFromStore(found));
    CertFreeCertificateContext(wanted);
    CertCloseStore(store, 0);
  }

private:
  static HCERTSTORE openStore() {
    return CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_CURRENT_USER, L"Root");
  }
  BYTE const * bytes() const { return reinterpret_cast<BYTE const *>(certificate_.data()); }
  DWORD size() const { return static_cast<DWORD>(certificate_.size()); }

  std::string const certificate_ = support::readFile(support::testAuthorityFile()).value();
};

struct Certificate {
  char const * name;
  bool isValid;
};
void PrintTo(Certificate const & certificate, std::ostream * out) { *out << certificate.name; }

class HttpTrust : public testing::TestWithParam<Certificate> {
protected:
  TrustedAuthority const authority;
};

TEST_P(HttpTrust, IsGivenToAValidCertificateAloneWhereThatIsRequired) {
  HttpServer server(GetParam().name);
  server.answer("*", okWith("secret"));
  KivHTTPClient client(wide(server.url("/", "localhost")), nullptr);
  EXPECT_TRUE(client.SetRequireValidSslCertificates(true));
  EXPECT_EQ(get(client), GetParam().isValid);
  EXPECT_EQ(client.GetResponseContent(), GetParam().isValid ? L"secret" : L"");
  EXPECT_EQ(client.GetLastError() == 0, GetParam().isValid);
  EXPECT_EQ(holds(server.requests(), "GET"), GetParam().isValid); // nothing is sent to the wrong one
}

INSTANTIATE_TEST_SUITE_P(Kinds, HttpTrust,
                         testing::Values(Certificate{"valid", true}, Certificate{"self-signed", false},
                                         Certificate{"expired", false}, Certificate{"wrong-name", false}));

class HttpDistrust : public HttpTrust {};

TEST_P(HttpDistrust, GivesOneCodeForEveryReasonUnderWine) {
  if (!support::isWine())
    GTEST_SKIP() << "the codes of Windows have not been seen";
  HttpServer const server(GetParam().name);
  KivHTTPClient client(wide(server.url("/", "localhost")), nullptr);
  client.SetRequireValidSslCertificates(true);
  EXPECT_FALSE(get(client));
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_SECURE_CHANNEL_ERROR);
}

INSTANTIATE_TEST_SUITE_P(Kinds, HttpDistrust,
                         testing::Values(Certificate{"self-signed", false}, Certificate{"expired", false},
                                         Certificate{"wrong-name", false}));

// Proxies

/// The user's settings as the system keeps them; the former come back with the end of this object.
class UserProxySettings {
public:
  UserProxySettings(std::string const & proxy, std::string const & bypass, std::string const & script) {
    RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr);
    DWORD size = 0;
    if (RegQueryValueExA(key_, kValue, nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS) {
      former_ = std::string(size, '\0');
      RegQueryValueExA(key_, kValue, nullptr, nullptr, reinterpret_cast<BYTE *>(former_->data()), &size);
    }
    constexpr DWORD kVersion = 0x46, kDirect = 1, kNamed = 2, kScripted = 4;
    DWORD const flags = kDirect | (proxy.empty() ? 0 : kNamed) | (script.empty() ? 0 : kScripted);
    write(number(kVersion) + number(1) + number(flags) + counted(proxy) + counted(bypass) + counted(script) +
          std::string(32, '\0'));
  }
  UserProxySettings(UserProxySettings const &) = delete;
  UserProxySettings & operator=(UserProxySettings const &) = delete;
  ~UserProxySettings() {
    if (former_)
      write(*former_);
    else
      RegDeleteValueA(key_, kValue);
    RegCloseKey(key_);
  }

private:
  static constexpr char kKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Connections";
  static constexpr char kValue[] = "DefaultConnectionSettings";

  static std::string number(DWORD value) { return std::string(reinterpret_cast<char const *>(&value), sizeof value); }
  static std::string counted(std::string const & text) { return number(static_cast<DWORD>(text.size())) + text; }

  void write(std::string const & bytes) const {
    EXPECT_EQ(RegSetValueExA(key_, kValue, 0, REG_BINARY, reinterpret_cast<BYTE const *>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS);
  }

  HKEY key_ = nullptr;
  std::optional<std::string> former_;
};

/// What the client passes to the real system about proxies, with no server at the other end.
class HttpUserProxy : public testing::Test {
protected:
  HttpUserProxy() {
    EXPECT_TRUE(support::spyOnImport("kivara.dll", "WinHttpSetOption", [this](support::SpiedCall const & call) {
      if (call.arguments[1] != WINHTTP_OPTION_PROXY)
        return;
      auto const & info = *reinterpret_cast<WINHTTP_PROXY_INFO const *>(call.arguments[2]);
      proxies.push_back(std::wstring(info.lpszProxy) + L' ' + (info.lpszProxyBypass ? info.lpszProxyBypass : L"-"));
    }));
    EXPECT_TRUE(support::spyOnImport("kivara.dll", "WinHttpSendRequest", [this](auto const &) { ++sendings; }));
    EXPECT_TRUE(support::spyOnImport("kivara.dll", "WinHttpGetProxyForUrl", [this](support::SpiedCall const & call) {
      auto const & options = *reinterpret_cast<WINHTTP_AUTOPROXY_OPTIONS const *>(call.arguments[2]);
      scripts.emplace_back(options.lpszAutoConfigUrl);
    }));
  }

  support::RefusingPort const refusing;
  KivHTTPClient client{wide("http://127.0.0.1:" + std::to_string(refusing.port()) + "/"), nullptr};
  std::vector<std::wstring> proxies, scripts;
  int sendings = 0;
};

TEST_F(HttpUserProxy, ThatIsFixedIsSetForTheNextAttempt) {
  UserProxySettings const settings("fixed.invalid:3128", "<local>", "");
  client.SetRetryTimes(2);
  EXPECT_FALSE(get(client)); // Wine does not look at the option
  EXPECT_EQ(proxies, (std::vector<std::wstring>{L"fixed.invalid:3128 <local>", L"fixed.invalid:3128 <local>"}));
  EXPECT_EQ(scripts.size(), 0u);
  EXPECT_EQ(sendings, 2);
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_CANNOT_CONNECT);
}

TEST_F(HttpUserProxy, OfAScriptIsAskedForWithItsUrl) {
  HttpServer server;
  server.answer("/pac", okWith("function FindProxyForURL(url, host) { return 'PROXY found.invalid:1'; }"));
  UserProxySettings const settings("fixed.invalid:3128", "", server.url("/pac"));
  EXPECT_FALSE(get(client));
  ASSERT_EQ(scripts.size(), 1u);
  EXPECT_EQ(scripts[0].c_str(), std::wstring(wide(server.url("/pac")).c_str()));
  if (proxies.empty()) { // Wine asks no script together with detection
    EXPECT_EQ(client.GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(sendings, 1);
  } else {
    EXPECT_TRUE(proxies[0].starts_with(L"found.invalid:1"));
    EXPECT_EQ(sendings, 2);
  }
}

TEST_F(HttpUserProxy, ThatIsNotSetLeavesTheErrorOfTheSending) {
  UserProxySettings const settings("", "", "");
  EXPECT_FALSE(get(client));
  EXPECT_TRUE(proxies.empty());
  EXPECT_EQ(client.GetLastError(), ERROR_WINHTTP_CANNOT_CONNECT);
}

} // namespace
