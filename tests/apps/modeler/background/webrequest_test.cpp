// Requests to a server of the tests.
#include "background/webrequest.hpp"

#include "support/processes/child_process.hpp"
#include "support/servers/http_server.hpp"

#include "apps/modeler/in_process.hpp"
#include "dialogs/requestdialog.hpp"

#include <gtest/gtest.h>

using support::HttpServer;

namespace modeler {
namespace {

class ModelerRequest : public testing::Test {
protected:
  WebAnswer fetchedFrom(std::string const & path) { return fetched(server.url(path)); }

  HttpServer server;
};

TEST_F(ModelerRequest, HasStatusSizesAndTheFirstLines) {
  server.answer("/list", support::okWith("one\r\ntwo", "X-Kind: test\r\n"));
  WebAnswer const answer = fetchedFrom("/list");
  EXPECT_EQ(answer.error, 0u);
  EXPECT_EQ(answer.status, "200");
  EXPECT_EQ(answer.bodyBytes, 8u);
  EXPECT_EQ(answer.lines, (std::vector<std::string>{"one", "two"}));
  EXPECT_FALSE(answer.goesOn);
  EXPECT_GE(answer.headerLines, 3u);
  EXPECT_GT(answer.headerBytes, std::string("HTTP/1.1 200 OK\r\nX-Kind: test\r\n").size());
}

TEST_F(ModelerRequest, OfAnotherStatusIsAnAnswerToo) {
  server.answer("/none", {.bytes = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone"});
  WebAnswer const answer = fetchedFrom("/none");
  EXPECT_EQ(answer.error, 0u);
  EXPECT_EQ(answer.status, "404");
  EXPECT_EQ(answer.lines, std::vector<std::string>{"none"});
}

TEST_F(ModelerRequest, ShowsTheBeginningOfALargeBody) {
  server.answer("/large", {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n\r\n", .fill = 3'000'000});
  WebAnswer const answer = fetchedFrom("/large");
  EXPECT_EQ(answer.bodyBytes, 3'000'000u);
  EXPECT_TRUE(answer.goesOn);
  EXPECT_LE(answer.lines.size(), 40u);
}

TEST_F(ModelerRequest, DoesNotCountBlanksAroundTheUrl) {
  server.answer("/", support::okWith("here"));
  EXPECT_EQ(fetched("  " + server.url("/") + " ").status, "200");
}

TEST_F(ModelerRequest, WithoutAServerFails) {
  support::RefusingPort const refusing;
  EXPECT_EQ(fetched("http://127.0.0.1:" + std::to_string(refusing.port()) + "/").error, 12029u);
}

TEST(ModelerUrl, ThatCannotBeUsedFails) {
  EXPECT_EQ(fetched("").error, 3u);
  EXPECT_EQ(fetched("   ").error, 3u);
  for (char const * const url : {"nonsense", "http://", "C:\\list.txt"})
    EXPECT_NE(fetched(url).error, 0u) << url;
}

TEST(ModelerUrl, OfAServerWithoutAValidCertificateFails) {
  HttpServer secure("self-signed");
  secure.answer("/", support::okWith("secret"));
  EXPECT_EQ(fetched(secure.url("/")).error, 12157u);
}

TEST_F(ModelerRequest, RunsBesideTheProgram) {
  server.answer("/slow", {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nlate", .delay = 300});
  WebRequest request;
  EXPECT_FALSE(request.IsRunning());
  EXPECT_FALSE(request.TakeAnswer());
  request.Start(server.url("/slow"));
  EXPECT_TRUE(request.IsRunning());
  std::optional<WebAnswer> answer;
  ASSERT_TRUE(support::eventually([&] { return (answer = request.TakeAnswer()).has_value(); }));
  EXPECT_EQ(answer->lines, std::vector<std::string>{"late"});
  EXPECT_FALSE(request.IsRunning());
  EXPECT_FALSE(request.TakeAnswer()) << "once";
}

TEST_F(ModelerRequest, IsDroppedWithoutWaitingForTheServer) {
  server.answer("/never",
                {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n", .end = support::HttpAnswer::End::hold});
  server.answer("/", support::okWith("here"));
  WebRequest request;
  request.Start(server.url("/never"));
  ASSERT_TRUE(support::eventually([&] { return server.requests().find("GET /never") != std::string::npos; }));
  EXPECT_FALSE(request.TakeAnswer());
  request.Start(server.url("/"));
  std::optional<WebAnswer> answer;
  ASSERT_TRUE(support::eventually([&] { return (answer = request.TakeAnswer()).has_value(); }));
  EXPECT_EQ(answer->lines, std::vector<std::string>{"here"}) << "of the later one";
}

class ModelerPatience : public InProcess {};

TEST_F(ModelerPatience, EndsWhenTheServerKeepsTheAnswerBack) {
  HttpServer server;
  server.answer("/never",
                {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n", .end = support::HttpAnswer::End::hold});
  RequestDialog * open = nullptr;
  std::string said;
  RequestDialog dialog(
      nullptr, server.url("/never").c_str(),
      [&](SV::String const &, SV::String const & outcome) {
        said = outcome.c_str();
        open->EndDialog();
      },
      1);
  open = &dialog;
  PostMessageA(FindWindowExA(dialog.GethWnd(), nullptr, "Button", "&Send"), BM_CLICK, 0, 0);
  dialog.Execute();
  EXPECT_EQ(said, "There was no complete answer within 1 seconds. It is no longer waited for.");
}

} // namespace
} // namespace modeler
