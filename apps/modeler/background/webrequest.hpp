#pragma once
/// \file
/// A request to a URL that the program does not wait for.

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace modeler {

/// What became of a request.
struct WebAnswer {
  unsigned long error = 0; ///< the system's code; 0 when an answer has come
  std::string status = {}; ///< "200"
  std::size_t headerBytes = 0;
  std::size_t headerLines = 0;
  std::size_t bodyBytes = 0;
  std::vector<std::string> lines = {}; ///< the first ones of the body
  bool goesOn = false;                 ///< the body has more than these
};

/// The first lines of a body, in the system's code page: read as UTF-8 if it is that, otherwise as it is. Long lines are cut, and what
/// ends or moves a line elsewhere is a blank.
/// \param goesOn  whether something was left out
std::vector<std::string> firstLines(std::string const & body, bool & goesOn);

/// Sends GET, and waits for the answer as long as time-outs and server allow. Certificates have to be valid. Any thread.
/// \param url  as typed; blanks around it do not count
WebAnswer fetched(std::string const & url);

/// A request on a thread of its own. What it was started for is dropped with the object, or by the next start; the thread
/// then ends by itself when the server lets it.
class WebRequest {
public:
  void Start(std::string const & url);
  void Drop() { state_.reset(); }
  bool IsRunning() const { return state_ != nullptr; }

  /// The answer, once; nothing as long as it has not come.
  std::optional<WebAnswer> TakeAnswer();

private:
  struct State;
  std::shared_ptr<State> state_;
};

} // namespace modeler
