#include "support/data/xml.hpp"

#include "tools/winapi.hpp"

#include <msxml.h>
#include <objbase.h>
#include <oleauto.h>

#include <cstring>
#include <stdexcept>

namespace support {
namespace {

/// A string as the parser takes and gives it.
class Bstr {
public:
  Bstr() = default;
  explicit Bstr(std::wstring const & text) : text_(SysAllocString(text.c_str())) {}
  Bstr(Bstr const &) = delete;
  Bstr & operator=(Bstr const &) = delete;
  ~Bstr() { SysFreeString(text_); }
  BSTR get() const { return text_; }
  BSTR * out() { return &text_; }
  std::wstring str() const { return std::wstring(text_, SysStringLen(text_)); }

private:
  BSTR text_ = nullptr;
};

void check(HRESULT result, char const * what) {
  if (FAILED(result) || result == S_FALSE)
    throw std::runtime_error(std::string(what) + ": " + std::to_string(result));
}

SAFEARRAY * arrayOf(std::string_view bytes) {
  SAFEARRAY * const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  void * data = nullptr;
  check(SafeArrayAccessData(array, &data), "array");
  std::memcpy(data, bytes.data(), bytes.size());
  SafeArrayUnaccessData(array);
  return array;
}

std::string narrow(std::wstring const & wide) {
  std::string text;
  for (wchar_t const c : wide)
    text += c < 0x80 ? static_cast<char>(c) : '?';
  return text;
}

std::string errorOf(IXMLDOMDocument * document) {
  IXMLDOMParseError * error = nullptr;
  check(document->get_parseError(&error), "parse error");
  long line = 0;
  Bstr reason;
  error->get_line(&line);
  error->get_reason(reason.out());
  error->Release();
  return "line " + std::to_string(line) + ": " + narrow(reason.str());
}

} // namespace

XmlDocument::XmlDocument(std::string_view bytes) {
  CoInitialize(nullptr);
  CLSID parser;
  check(CLSIDFromProgID(L"Msxml2.DOMDocument.3.0", &parser), "parser");
  check(CoCreateInstance(parser, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                         reinterpret_cast<void **>(&document_)),
        "parser");
  document_->put_async(VARIANT_FALSE);
  document_->put_preserveWhiteSpace(VARIANT_TRUE);
  VARIANT source;
  VariantInit(&source);
  source.vt = VT_ARRAY | VT_UI1;
  source.parray = arrayOf(bytes);
  VARIANT_BOOL good = VARIANT_FALSE;
  document_->load(source, &good);
  VariantClear(&source);
  if (good != VARIANT_TRUE)
    error_ = errorOf(document_);
}

XmlDocument::~XmlDocument() {
  document_->Release();
  CoUninitialize();
}

std::wstring XmlDocument::text(std::wstring const & path) const {
  Bstr const expression(path);
  IXMLDOMNode * node = nullptr;
  check(document_->selectSingleNode(expression.get(), &node), "node");
  // The typed value is as it stands; get_text takes white space off some nodes.
  VARIANT value;
  VariantInit(&value);
  IXMLDOMNode * child = nullptr;
  bool const isElement = node->get_firstChild(&child) == S_OK;
  Bstr text;
  if (isElement && child->get_nodeValue(&value) == S_OK && value.vt == VT_BSTR)
    *text.out() = SysAllocStringLen(value.bstrVal, SysStringLen(value.bstrVal));
  else
    node->get_text(text.out());
  VariantClear(&value);
  if (child != nullptr)
    child->Release();
  node->Release();
  return text.str();
}

long XmlDocument::count(std::wstring const & path) const {
  Bstr const expression(path);
  IXMLDOMNodeList * nodes = nullptr;
  check(document_->selectNodes(expression.get(), &nodes), "nodes");
  long length = 0;
  nodes->get_length(&length);
  nodes->Release();
  return length;
}

} // namespace support
