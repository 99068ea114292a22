// Texts of many languages: loading beside fread into nested maps, look-ups beside nested maps.

#include "ainter.hpp"
#include "amlstr.hpp"
#include "locale/amlstr_format.hpp"
#include "support/ratio.hpp"
#include "sv/application.hpp"
#include "tools/winapi.hpp"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;
using Nested = std::map<unsigned short, std::map<unsigned short, std::string>>;

constexpr unsigned short kLanguages[] = {1025, 1031, 1034, 1036, 1040, 1043, 1050, 1053, 2052, 2057};
constexpr int kLanguageCount = 10;

/// A program folder of this process's own: the library takes the folder of the module that the process names.
class ProgramFolder {
public:
  ProgramFolder() : path_(fs::current_path() / "words of the benchmark") {
    fs::create_directories(path_);
    char own[MAX_PATH];
    GetModuleFileNameA(GetModuleHandleA("bench_empty_call.dll"), own, sizeof own);
    fs::copy_file(own, path_ / "folder.dll", fs::copy_options::overwrite_existing);
    module_ = LoadLibraryA((path_ / "folder.dll").string().c_str());
    if (module_ == nullptr)
      throw std::runtime_error("the folder of the benchmark cannot be set up");
    SV::SetProcessData(module_, GetCurrentThreadId(), SW_HIDE);
    std::ofstream list(path_ / "lang.ini");
    for (unsigned short const language : kLanguages)
      list << language << '\n';
    list.close();
    KivInternational::InitAvailableLanguages();
  }
  ProgramFolder(ProgramFolder const &) = delete;
  ProgramFolder & operator=(ProgramFolder const &) = delete;
  ~ProgramFolder() {
    SV::SetProcessData(GetModuleHandleA(nullptr), GetCurrentThreadId(), SW_HIDE);
    FreeLibrary(module_);
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }

  std::string file(unsigned short language) const {
    return (path_ / "language" / std::to_string(language) / "kivml.dll").string();
  }

  /// Gives each language so many texts.
  void write(int count) const {
    for (unsigned short const language : kLanguages) {
      fs::create_directories(fs::path(file(language)).parent_path());
      std::ofstream out(file(language), std::ios::binary);
      auto const put = [&out](std::uint32_t value) { out.write(reinterpret_cast<char const *>(&value), 4); };
      put(kivara::mlfile::kMagic);
      put(kivara::mlfile::kVersion);
      for (int id = 1; id <= count; ++id) {
        std::string text = "text " + std::to_string(id) + " of language " + std::to_string(language);
        put(static_cast<std::uint32_t>(text.size()));
        put(static_cast<std::uint32_t>(id));
        for (char & c : text)
          c = static_cast<char>(c ^ kivara::mlfile::kMask);
        out << text;
      }
      put(0);
    }
  }

private:
  fs::path path_;
  HMODULE module_ = nullptr;
};

struct Closer {
  void operator()(FILE * file) const { std::fclose(file); }
};

void readWithFread(std::string const & name, std::map<unsigned short, std::string> & texts) {
  std::unique_ptr<FILE, Closer> const file(std::fopen(name.c_str(), "rb"));
  std::uint32_t head[2];
  if (file == nullptr || std::fread(head, 4, 2, file.get()) != 2)
    return;
  while (std::fread(head, 4, 1, file.get()) == 1 && head[0] > 0 && std::fread(head + 1, 4, 1, file.get()) == 1) {
    std::string text(head[0], '\0');
    if (std::fread(text.data(), 1, text.size(), file.get()) != text.size())
      return;
    for (char & c : text)
      c = static_cast<char>(c ^ kivara::mlfile::kMask);
    texts.try_emplace(static_cast<unsigned short>(head[1]), std::move(text));
  }
}

Nested readAll(ProgramFolder const & folder) {
  Nested languages;
  for (unsigned short const language : kLanguages)
    readWithFread(folder.file(language), languages[language]);
  return languages;
}

constexpr int kLoaded = 10'000; // in each of ten languages

void load(benchmark::State & state) {
  ProgramFolder const folder;
  folder.write(kLoaded);
  for (auto _ : state) {
    Kiv_InitializeMultiLanguageStrings();
    Kiv_DeinitializeMultiLanguageStrings();
  }
}

void loadNested(benchmark::State & state) {
  ProgramFolder const folder;
  folder.write(kLoaded);
  for (auto _ : state)
    benchmark::DoNotOptimize(readAll(folder).size());
}

/// Runs the body with the tables loaded.
bench::Body loaded(int count, std::function<void(benchmark::State &, Nested const &)> body) {
  return [count, body](benchmark::State & state) {
    ProgramFolder const folder;
    folder.write(count);
    Kiv_InitializeMultiLanguageStrings();
    body(state, readAll(folder));
    Kiv_DeinitializeMultiLanguageStrings();
  };
}

constexpr unsigned kIdStep = 7919; // visits the identifiers in no order

void get(benchmark::State & state, Nested const &) {
  unsigned i = 0;
  for (auto _ : state) {
    i += kIdStep;
    benchmark::DoNotOptimize(
        Kiv_MultiLangGet(static_cast<unsigned short>(1 + i % kLoaded), kLanguages[i % kLanguageCount]));
  }
}

void getNested(benchmark::State & state, Nested const & nested) {
  unsigned i = 0;
  for (auto _ : state) {
    i += kIdStep;
    auto const & texts = nested.find(kLanguages[i % kLanguageCount])->second;
    benchmark::DoNotOptimize(texts.find(static_cast<unsigned short>(1 + i % kLoaded))->second.c_str());
  }
}

void find(benchmark::State & state, Nested const &) {
  SV::String const text("text 5 of language 2057");
  for (auto _ : state)
    benchmark::DoNotOptimize(Kiv_MultiLangFindResId(text));
}

bench::Pair const pairs[] = {
    {"Words: load 100,000 in 10 languages", bench::atMost(1), load, "fread into nested std::map", loadNested},
    {"Kiv_MultiLangGet: by identifier", bench::atMost(1.2), loaded(kLoaded, get), "two std::map look-ups",
     loaded(kLoaded, getNested)},
    {"Kiv_MultiLangFindResId: 10,000 texts", bench::shown(), loaded(1000, find), "1,000 texts", loaded(100, find)},
    {"Kiv_MultiLangFindResId: 100,000 texts", bench::shown(), loaded(10'000, find), "10,000 texts", loaded(1000, find)},
};

} // namespace
