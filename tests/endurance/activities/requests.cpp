// Requests to a server on this machine, and to none.

#include "../activity.hpp"

#include "ahttp.hpp"
#include "support/data/files.hpp"
#include "support/servers/http_server.hpp"

#include <cstdio>

namespace endurance {
namespace {

SV::WString wide(std::string const & text) { return SV::WString(std::wstring(text.begin(), text.end()).c_str()); }

class Requests : public Activity {
public:
  explicit Requests(Place const & place) : file_(place.folder + "\\answer.txt") {
    server_.answer("/list", support::okWith(std::string(20'000, 'a')));
    server_.answer("/form", support::okWith("thanks"));
    server_.answer("/moved", support::redirectTo("/list"));
  }

  bool round() override {
    KivHTTPClient client(wide(server_.url("/list")), nullptr);
    get(client);
    save(client);
    expect(client.UpdateUrl(wide(server_.url("/moved"))), "the client takes no other address");
    get(client);
    post(client);
    KivHTTPClient lost(wide("http://127.0.0.1:" + std::to_string(nobody_.port()) + '/'), nullptr);
    expect(!lost.SendHttpRequest(L"GET", false) && lost.GetLastError() != 0, "nobody has answered");
    return true;
  }

private:
  static void get(KivHTTPClient & client) {
    expect(client.SendHttpRequest(L"GET", false) && client.GetResponseStatusCode() == L"200", "no answer");
    expect(client.GetRawResponseReceivedContentLength() == 20'000, "half an answer");
  }

  void save(KivHTTPClient const & client) const {
    std::scoped_lock const lock(filesInUse());
    expect(client.SaveResponseToFile(wide(file_)) && std::remove(file_.c_str()) == 0, "an answer was not saved");
  }

  void post(KivHTTPClient & client) const {
    unsigned char data[] = "name=value";
    client.UpdateUrl(wide(server_.url("/form")));
    client.SetAdditionalRequestHeaders(L"Content-Length: 10");
    expect(client.SetAdditionalDataToSend(data, 10) && client.SendHttpRequest(L"POST", false) &&
               client.GetResponseContent() == L"thanks",
           "a form was not taken");
  }

  support::HttpServer server_;
  support::RefusingPort nobody_;
  std::string file_;
};

} // namespace

ActivityPtr requestPages(Place const & place) { return std::make_unique<Requests>(place); }

} // namespace endurance
