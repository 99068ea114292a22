// The sample "fetch": what it saves, and its exit codes.

#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "support/servers/http_server.hpp"

#include <gtest/gtest.h>

using support::HttpServer;
using support::okWith;
using support::ProgramResult;

namespace {

class Fetch : public testing::Test {
protected:
  ProgramResult fetch(std::string const & arguments) const {
    return support::runProgram({.program = "fetch", .arguments = arguments, .workingFolder = folder.path()});
  }
  std::optional<std::string> file() const { return support::readFile(folder / "file"); }

  support::TempFolder const folder;
  HttpServer server;
};

TEST_F(Fetch, SavesTheBytes) {
  std::string const bytes("one\r\ntwo\0three\xFF", 15);
  server.answer("/list", okWith(bytes));
  ProgramResult const result = fetch(server.url("/list") + " file");
  EXPECT_EQ(result.exitCode, 0u) << result.errors;
  EXPECT_EQ(result.output, "15 bytes\r\n");
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(file(), bytes);
  EXPECT_NE(server.requests().find("User-Agent: fetch\r\n"), std::string::npos);
}

TEST_F(Fetch, SavesAnEmptyBodyAsAnEmptyFile) {
  server.answer("/", okWith(""));
  EXPECT_EQ(fetch(server.url("/") + " file").exitCode, 0u);
  EXPECT_EQ(file(), "");
}

TEST_F(Fetch, ReplacesTheFile) {
  support::writeFile(folder / "file", "a longer text than the new one");
  server.answer("/", okWith("new"));
  EXPECT_EQ(fetch(server.url("/") + " file").exitCode, 0u);
  EXPECT_EQ(file(), "new");
}

TEST_F(Fetch, WithoutAnAnswerEndsWith1AndTheCode) {
  support::RefusingPort const refusing;
  ProgramResult const result = fetch("http://127.0.0.1:" + std::to_string(refusing.port()) + "/ file");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.errors, "fetch: no answer, system error 12029\r\n");
  EXPECT_FALSE(file());
}

TEST_F(Fetch, OfWhatIsNoUrlEndsWith1) {
  ProgramResult const result = fetch("nonsense file");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.errors, "fetch: this is no URL that can be used\r\n");
}

TEST_F(Fetch, OfAnotherStatusEndsWith3AndLeavesTheFile) {
  support::writeFile(folder / "file", "former");
  server.answer("/", {.bytes = "HTTP/1.1 404 Not Found\r\nContent-Length: 4\r\n\r\nnone"});
  ProgramResult const result = fetch(server.url("/") + " file");
  EXPECT_EQ(result.exitCode, 3u);
  EXPECT_EQ(result.errors, "fetch: status 404\r\n");
  EXPECT_EQ(file(), "former");
}

TEST_F(Fetch, ToAFileThatCannotBeWrittenEndsWith4) {
  server.answer("/", okWith("bytes"));
  server.answer("/empty", okWith(""));
  for (char const * const path : {"/", "/empty"}) {
    ProgramResult const result = fetch(server.url(path) + " folder\\file");
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_EQ(result.errors, "fetch: cannot write folder\\file\r\n");
  }
}

TEST_F(Fetch, FollowsRedirectsUnlessForbidden) {
  server.answer("/from", support::redirectTo("/to"));
  server.answer("/to", okWith("there"));
  EXPECT_EQ(fetch("-noredirects " + server.url("/from") + " file").exitCode, 3u);
  EXPECT_FALSE(file());
  EXPECT_EQ(fetch(server.url("/from") + " file").exitCode, 0u);
  EXPECT_EQ(file(), "there");
}

TEST_F(Fetch, WantsAValidCertificateUnlessTheOptionSaysNot) {
  HttpServer secure("self-signed");
  secure.answer("/", okWith("secret"));
  EXPECT_EQ(fetch(secure.url("/") + " file").exitCode, 1u);
  EXPECT_FALSE(file());
  EXPECT_EQ(fetch("-insecure " + secure.url("/") + " file").exitCode, 0u);
  EXPECT_EQ(file(), "secret");
}

TEST_F(Fetch, TriesAsOftenAsTheOptionSays) {
  server.answer("/", {.bytes = ""});
  server.answer("/", {.bytes = ""});
  server.answer("/", okWith("third"));
  EXPECT_EQ(fetch("-tries 3 " + server.url("/") + " file").exitCode, 0u);
  EXPECT_EQ(file(), "third");
}

TEST_F(Fetch, EndsByTheTimeout) {
  std::string const url = "http://127.0.0.1:" + std::to_string(server.fullPort()) + "/";
  ProgramResult const result = fetch("-timeout 1 " + url + " file");
  EXPECT_EQ(result.exitCode, 1u);
  EXPECT_EQ(result.errors, "fetch: no answer, system error 12002\r\n");
}

TEST_F(Fetch, TakesAFileNameWithBlanksThroughAProxy) {
  server.answer("/", okWith("here"));
  EXPECT_EQ(fetch("-proxy 127.0.0.1:" + std::to_string(server.port()) + ' ' + server.url("/") + " \"a name\"").exitCode,
            0u);
  EXPECT_EQ(support::readFile(folder / "a name"), "here");
}

class FetchUsage : public testing::TestWithParam<char const *> {};

TEST_P(FetchUsage, IsPrintedWithExitCode2) {
  ProgramResult const result = support::runProgram({.program = "fetch", .arguments = GetParam()});
  EXPECT_EQ(result.exitCode, 2u);
  EXPECT_TRUE(result.errors.starts_with("usage: fetch [options] URL FILE\r\n")) << result.errors;
  EXPECT_EQ(result.output, "");
}
INSTANTIATE_TEST_SUITE_P(Of, FetchUsage,
                         testing::Values("", "http://127.0.0.1/", "http://127.0.0.1/ file more", "-unknown",
                                         "-unknown 1 http://127.0.0.1/ file", "-tries",
                                         "-tries 0 http://127.0.0.1/ file", "-tries x http://127.0.0.1/ file",
                                         "-tries 1001 http://127.0.0.1/ file", "-timeout -1 http://127.0.0.1/ file",
                                         "-proxy"));

} // namespace
