// Temporary files, readers and parser; expressions, wildcards, texts for markup files, dates.

#include "../activity.hpp"

#include "acleanup.hpp"
#include "adattime.hpp"
#include "afileman.hpp"
#include "amemcach.hpp"
#include "aparser.hpp"
#include "areader.hpp"
#include "aregex.hpp"
#include "asgml.hpp"
#include "support/data/files.hpp"

#include <cstdio>
#include <sstream>

namespace endurance {
namespace {

class TemporaryFiles : public Activity {
public:
  explicit TemporaryFiles(Place const & place) : folder_(place.temporary) {}

  bool round() override {
    std::scoped_lock const lock(filesInUse());
    SV::String const name = KivSystemFileManager::fileCreateTempName("endure", "txt");
    expect(std::string(name.c_str()).starts_with(folder_), "a temporary file lies elsewhere");
    support::writeFile(name.c_str(), "one = 1\r\ntwo = \"2\"\n");
    parse(name);
    // As a program that has no more use for it: the list of what goes at the end would grow otherwise.
    expect(std::remove(name.c_str()) == 0, "a temporary file is still in use");
    KivCleanUp::Instance().RemoveFileCleanUpAction(name);
    return true;
  }

private:
  static void parse(SV::String const & name) {
    KivTextParser parser(new KivTextFileReader(name), 1);
    SV::String token;
    int count = 0;
    while (parser.GetNextToken(token))
      ++count;
    expect(count == 8, "the parser has found another number of tokens");
  }

  std::string folder_;
};

class Texts : public Activity {
public:
  bool round() override {
    match();
    KivJokerz const wildcards("*.doc?", 1);
    expect(wildcards.match("Offer.DOCX") == 1, "a wildcard does not match");
    expect(KivSGMLString::GetSGMLString("a < b") == "a &lt; b", "a text for SGML is wrong");
    std::ostringstream out;
    out << KivSGMLString("a & b");
    expect(!out.str().empty(), "no text was written");
    expect(KivDate::GetFormatedDate(SV::Date(5, 3, 2024), "DD MM YYYY") == "05 03 2024", "a date is wrong");
    blocks();
    return true;
  }

private:
  static void match() {
    KivRegEx expression("([0-9]+)-([a-z]+)(x|y)*", 0);
    KivRegEx const copy(expression);
    int start = 0;
    int end = 0;
    expect(copy.match("page 12-abc", start, end) == 1 && start == 5 && end == 11, "an expression does not match");
    expect(expression.regComp("[", 0, 0) != KivRegEx::Success, "a bad expression was taken");
    expect(expression.regComp("^a{2,40}b", 2, 0) == KivRegEx::Success, "an expression was not taken");
  }

  static void blocks() {
    KivMemCache cache;
    void * blocks[12] = {};
    for (void *& block : blocks)
      block = cache.Alloc(5000);
    for (void * const block : blocks)
      cache.Free(block);
    cache.Free(KivMemCache::General().Alloc(100));
  }
};

} // namespace

ActivityPtr makeTemporaryFiles(Place const & place) { return std::make_unique<TemporaryFiles>(place); }
ActivityPtr matchTexts(Place const &) { return std::make_unique<Texts>(); }

} // namespace endurance
