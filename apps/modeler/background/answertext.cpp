#include "background/answertext.hpp"

#include "texts/diagnosticstexts.hpp"
#include "tools/winapi.hpp"

#include <algorithm>
#include <iterator>

using SV::String;

namespace modeler {
namespace {

/// Of the HTTP library of the system, whose header would have to be loaded for them alone.
enum WebError : unsigned long {
  kNoSuchPath = 3, // of the library, for an empty URL
  kTimedOut = 12002,
  kUrlInvalid = 12005,
  kSchemeUnknown = 12006,
  kNameUnknown = 12007,
  kCannotConnect = 12029,
  kConnectionEnded = 12030,
  kAnswerInvalid = 12152,
  kChannelFailed = 12157,
  kInsecure = 12175
};

struct Reason {
  unsigned long error;
  Text text;
};
constexpr Reason kReasons[] = {{kNoSuchPath, kNoUrl},           {ERROR_INVALID_NAME, kNoUrl},
                               {kUrlInvalid, kNoUrl},           {kSchemeUnknown, kNoUrl},
                               {kTimedOut, kTimeout},           {kNameUnknown, kUnknownHost},
                               {kCannotConnect, kNoConnection}, {kConnectionEnded, kConnectionLost},
                               {kAnswerInvalid, kBadAnswer},    {kChannelFailed, kBadCertificate},
                               {kInsecure, kBadCertificate},    {ERROR_NOT_ENOUGH_MEMORY, kNoMemory}};

String reasonOf(unsigned long error) {
  auto const * const known =
      std::find_if(std::begin(kReasons), std::end(kReasons), [error](Reason const & r) { return r.error == error; });
  return known != std::end(kReasons) ? text(known->text) : filled(kOtherFailure, std::to_string(error).c_str());
}

} // namespace

String answerText(WebAnswer const & answer) {
  if (answer.error != 0)
    return reasonOf(answer.error);
  String result = filled(kStatus, answer.status.c_str()) + "\n";
  result += filled(kHeaders, std::to_string(answer.headerBytes).c_str(), std::to_string(answer.headerLines).c_str());
  result += "\n" + filled(kBody, std::to_string(answer.bodyBytes).c_str());
  if (!answer.lines.empty())
    result += "\n";
  for (std::string const & line : answer.lines)
    result += ("\n" + line).c_str();
  return answer.goesOn ? result + "\n\n" + text(kBodyGoesOn) : result;
}

} // namespace modeler
