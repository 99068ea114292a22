#include "requests.hpp"

#include "kivara.hpp"

using SV::String;

namespace service {
namespace {

constexpr char kWords[] = "/words/";

Response status() {
  String now;
  Kiv_GetCurrentDateTimeString(now, true);
  String const text = "version: " + Kiv_GetPatchBuildVersionString() +
                      "\nlanguage: " + String(KivInternational::GetCurrentLanguageID()) + "\ntime: " + now + "\n";
  return {200, text.c_str()};
}

Response findWord(std::string const & word) {
  unsigned short const id = Kiv_MultiLangFindResId(word.c_str());
  if (id == 0)
    return {404, "no word of any installed language\n"};
  return {200, std::to_string(id) + "\n"};
}

} // namespace

Response answer(std::optional<Request> const & request) {
  if (!request)
    return {400, "no request\n"};
  if (request->method == "GET" && request->path == "/status")
    return status();
  if (request->method == "GET" && request->path.starts_with(kWords))
    return findWord(request->path.substr(sizeof kWords - 1));
  if (request->method == "POST" && request->path == "/stop")
    return {200, "stopping\n", true};
  return {404, "GET /status, GET /words/TEXT, POST /stop\n"};
}

} // namespace service
