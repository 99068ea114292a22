#include "amachine.hpp"
#include "handles/handle.hpp"
#include "system/machine/systemfunction.hpp"

#include <objbase.h>
#include <oleauto.h>
#include <wbemcli.h>

#include <memory>

using SV::String;

namespace {

constexpr wchar_t kNamespace[] = L"ROOT\\CIMV2";
constexpr wchar_t kQuery[] = L"SELECT UUID FROM Win32_ComputerSystemProduct";
constexpr wchar_t kProperty[] = L"UUID";
constexpr long kMostWait = 30000; // for the answer, in milliseconds

template <class Function> Function * ofCom(char const * name) {
  return kivara::systemFunction<Function>("ole32.dll", name);
}
template <class Function> Function * ofAutomation(char const * name) {
  return kivara::systemFunction<Function>("oleaut32.dll", name);
}

/// The functions of COM that are used here.
struct Com {
  decltype(CoInitializeEx) * initialize = ofCom<decltype(CoInitializeEx)>("CoInitializeEx");
  decltype(CoUninitialize) * uninitialize = ofCom<decltype(CoUninitialize)>("CoUninitialize");
  decltype(CoCreateInstance) * createInstance = ofCom<decltype(CoCreateInstance)>("CoCreateInstance");
  decltype(CoSetProxyBlanket) * setProxyBlanket = ofCom<decltype(CoSetProxyBlanket)>("CoSetProxyBlanket");
  decltype(SysAllocString) * allocateText = ofAutomation<decltype(SysAllocString)>("SysAllocString");
  decltype(SysFreeString) * freeText = ofAutomation<decltype(SysFreeString)>("SysFreeString");
  decltype(VariantClear) * clearVariant = ofAutomation<decltype(VariantClear)>("VariantClear");

  bool isThere() const {
    return initialize != nullptr && uninitialize != nullptr && createInstance != nullptr &&
           setProxyBlanket != nullptr && allocateText != nullptr && freeText != nullptr && clearVariant != nullptr;
  }
};

/// Initialises COM on this thread for its own lifetime. A thread that has already chosen another apartment keeps it.
class ComOnThread {
public:
  explicit ComOnThread(Com const & com)
      : com_(com), isOurs_(SUCCEEDED(com.initialize(nullptr, COINIT_MULTITHREADED))) {}
  ComOnThread(ComOnThread const &) = delete;
  ComOnThread & operator=(ComOnThread const &) = delete;
  ~ComOnThread() {
    if (isOurs_)
      com_.uninitialize();
  }

private:
  Com const & com_;
  bool isOurs_;
};

template <class Interface> struct ComKind : handles::NullKind<Interface *> {
  static void close(Interface * object) { object->Release(); }
};
template <class Interface> using ComPointer = handles::Handle<ComKind<Interface>>;

using ComText = std::unique_ptr<OLECHAR, decltype(SysFreeString) *>;
ComText comText(Com const & com, wchar_t const * text) { return {com.allocateText(text), com.freeText}; }

/// Connects to the WMI service; none if it is not available.
ComPointer<IWbemServices> connect(Com const & com) {
  void * locator = nullptr;
  if (FAILED(
          com.createInstance(__uuidof(WbemLocator), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IWbemLocator), &locator)))
    return {};
  ComPointer<IWbemLocator> const owner(static_cast<IWbemLocator *>(locator));
  IWbemServices * services = nullptr;
  if (FAILED(owner.get()->ConnectServer(comText(com, kNamespace).get(), nullptr, nullptr, nullptr,
                                        WBEM_FLAG_CONNECT_USE_MAX_WAIT, nullptr, nullptr, &services)))
    return {};
  // Lets the service act for the user. If that fails, so does the query.
  com.setProxyBlanket(services, RPC_C_AUTHN_WINNT, RPC_C_AUTHZ_NONE, nullptr, RPC_C_AUTHN_LEVEL_CALL,
                      RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE);
  return ComPointer<IWbemServices>(services);
}

/// The first object that the query finds; none if there is none.
ComPointer<IWbemClassObject> firstAnswer(Com const & com, IWbemServices & services) {
  IEnumWbemClassObject * answers = nullptr;
  if (FAILED(services.ExecQuery(comText(com, L"WQL").get(), comText(com, kQuery).get(),
                                WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, &answers)))
    return {};
  ComPointer<IEnumWbemClassObject> const owner(answers);
  IWbemClassObject * object = nullptr;
  ULONG count = 0;
  owner.get()->Next(kMostWait, 1, &object, &count); // leaves null if there is none, or none in time
  return ComPointer<IWbemClassObject>(object);
}

/// Identifiers are plain ASCII.
String narrow(BSTR text) {
  String result;
  for (wchar_t const * at = text; at != nullptr && *at != L'\0'; ++at)
    result += static_cast<char>(*at);
  return result;
}

String propertyText(Com const & com, IWbemClassObject & object) {
  VARIANT value = {};
  if (FAILED(object.Get(kProperty, 0, &value, nullptr, nullptr)))
    return {};
  String const text = value.vt == VT_BSTR ? narrow(value.bstrVal) : String();
  com.clearVariant(&value);
  return text;
}

} // namespace

String KivWMI::GetWindowsSystemID() {
  Com const com;
  if (!com.isThere())
    return {};
  ComOnThread const thread(com);
  ComPointer<IWbemServices> const services = connect(com);
  if (!services)
    return {};
  ComPointer<IWbemClassObject> const object = firstAnswer(com, *services.get());
  return object ? propertyText(com, *object.get()) : String();
}
