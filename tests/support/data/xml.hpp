#pragma once
/// \file
/// XML as the system's own parser reads it.
///
///     support::XmlDocument const document(bytes);
///     EXPECT_EQ(document.error(), "");
///     EXPECT_EQ(document.text("/model/node[1]/@text"), L"Check the order");

#include <string>
#include <string_view>

struct IXMLDOMDocument;

namespace support {

/// A document in memory, parsed with its white space. One thread uses it. Throws std::runtime_error where the system has no
/// parser.
class XmlDocument {
public:
  explicit XmlDocument(std::string_view bytes);
  XmlDocument(XmlDocument const &) = delete;
  XmlDocument & operator=(XmlDocument const &) = delete;
  ~XmlDocument();

  /// Why the parser refused it, with the line; empty for a good document.
  std::string const & error() const { return error_; }

  /// The text of the first node that an XPath expression selects; throws where there is none.
  std::wstring text(std::wstring const & path) const;

  /// How many nodes it selects.
  long count(std::wstring const & path) const;

private:
  IXMLDOMDocument * document_ = nullptr;
  std::string error_;
};

} // namespace support
