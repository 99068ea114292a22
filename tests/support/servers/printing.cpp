#include "support/servers/printing.hpp"

#include "support/data/files.hpp"
#include "support/processes/child_process.hpp"
#include "tools/winapi.hpp"

#include <winspool.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace support {
namespace {

std::string printedFolder() {
  char const * const folder = std::getenv("KIVARA_PRINTED");
  return folder != nullptr ? folder : "";
}

std::string printedFile(std::string const & name) {
  std::string path = "Z:" + printedFolder() + '/' + name;
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

/// A program outside of Wine gives no handles: what stands in their place may be the number of any other, and is not to be closed.
/// That it has ended is seen by its file.
void askServer(std::string const & what, std::string const & queue) {
  std::string const answer = printedFile(queue + ".done");
  DeleteFileA(answer.c_str());
  std::string commandLine = "sh \"" KIVARA_PRINT_QUEUE "\" " + what + ' ' + queue;
  STARTUPINFOA start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA("\\\\?\\unix/bin/sh", commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                      &process))
    throw std::runtime_error("print-queue does not start: error " + std::to_string(GetLastError()));
  if (!eventually([&] { return exists(answer); }))
    throw std::runtime_error("print-queue does not answer: " + what + ' ' + queue);
  std::string const text = readFile(answer).value_or("");
  if (!text.starts_with("0 "))
    throw std::runtime_error("print-queue " + what + ' ' + queue + ": " + text);
}

/// Wine keeps this mutex as long as any process of the prefix has winspool.drv, and reads the server's list only when there is none.
bool isSpoolerInUse() {
  HANDLE const mutex = OpenMutexA(SYNCHRONIZE, FALSE, "__WINE_WINSPOOL_MUTEX__");
  if (mutex != nullptr)
    CloseHandle(mutex);
  return mutex != nullptr;
}

std::string ownName(std::string const & ending) {
  static int count = 0;
  return "q" + std::to_string(GetCurrentProcessId()) + '-' + std::to_string(GetTickCount()) + '-' +
         std::to_string(++count) + ending;
}

std::vector<std::string> splitAt(std::string const & text, char separator) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(separator, begin)) != std::string::npos; begin = end + 1)
    parts.push_back(text.substr(begin, end - begin));
  if (begin < text.size())
    parts.push_back(text.substr(begin));
  return parts;
}

double numberAfter(std::string const & line, char const * key) {
  std::size_t const at = line.find(key);
  return at == std::string::npos ? 0 : std::atof(line.c_str() + at + std::string(key).size());
}

std::vector<PrintedPaper> papersIn(std::string const & html) {
  std::vector<PrintedPaper> papers;
  for (std::string const & line : splitAt(html, '\n')) {
    if (line.find("<page ") != std::string::npos)
      papers.push_back({numberAfter(line, "width=\""), numberAfter(line, "height=\""), {}});
    std::size_t const word = line.find("<word ");
    if (word == std::string::npos)
      continue;
    std::size_t const begin = line.find('>', word) + 1;
    papers.back().words.push_back(
        {line.substr(begin, line.find("</word>") - begin), numberAfter(line, "xMin=\""), numberAfter(line, "yMin=\"")});
  }
  return papers;
}

/// The file and its job's number.
using Numbered = std::pair<int, std::string>;

} // namespace

std::vector<std::string> PrintedJob::lines(std::size_t page) const {
  std::vector<std::string> found;
  for (std::string const & line : splitAt(pages.at(page), '\n')) {
    std::size_t const begin = line.find_first_not_of(" \r");
    if (begin != std::string::npos)
      found.push_back(line.substr(begin, line.find_last_not_of(" \r") + 1 - begin));
  }
  return found;
}

int PrintedJob::grayAt(int x, int y) const {
  std::size_t const at =
      static_cast<std::size_t>(y) * static_cast<std::size_t>(pictureWidth) + static_cast<std::size_t>(x);
  return x >= 0 && x < pictureWidth && y >= 0 && at < pixels.size() ? static_cast<unsigned char>(pixels[at]) : 255;
}

PrintQueue::PrintQueue(std::string const & ending) : name_(ownName(ending)) {
  if (GetModuleHandleA("winspool.drv") != nullptr)
    throw std::runtime_error("a queue has to be made before this process uses printers: run each test by itself");
  if (!eventually([] { return !isSpoolerInUse(); }))
    throw std::runtime_error("another program uses printers, so that a new queue would not be seen");
  askServer("add", name_);
}

PrintQueue::~PrintQueue() {
  try {
    remove();
  } catch (std::runtime_error const & fault) {
    ADD_FAILURE() << fault.what();
  }
}

void PrintQueue::remove() {
  if (!removed_)
    askServer("remove", name_);
  removed_ = true;
}

std::vector<std::string> PrintQueue::printedFiles() const {
  std::vector<Numbered> found;
  std::string const beginning = name_ + '-';
  for (std::string const & entry : entriesOf(printedFile("")))
    if (entry.starts_with(beginning) && entry.ends_with(".pdf"))
      found.emplace_back(std::atoi(entry.c_str() + beginning.size()), entry.substr(0, entry.size() - 4));
  std::sort(found.begin(), found.end());
  std::vector<std::string> names;
  for (Numbered const & each : found)
    names.push_back(each.second);
  return names;
}

std::size_t PrintQueue::jobCount() const { return printedFiles().size(); }

PrintedJob PrintQueue::job(std::size_t number) const {
  if (!eventually([&] { return jobCount() >= number; }, 60))
    throw std::runtime_error("nothing was printed");
  std::string const file = printedFile(printedFiles()[number - 1]);
  PrintedJob job;
  job.title = readFile(file + ".title").value_or("");
  job.pages = splitAt(readFile(file + ".txt").value_or(""), '\f');
  job.papers = papersIn(readFile(file + ".html").value_or(""));
  std::string const picture = readFile(file + ".pgm").value_or("");
  std::size_t const sizes = picture.find('\n') + 1;
  job.pictureWidth = std::atoi(picture.c_str() + sizes);
  job.pixels = picture.substr(picture.find('\n', picture.find('\n', sizes) + 1) + 1);
  return job;
}

void removePrinter(std::string const & name) {
  HMODULE const spooler = LoadLibraryA("winspool.drv");
  auto const open = reinterpret_cast<BOOL(WINAPI *)(char *, HANDLE *, PRINTER_DEFAULTSA *)>(
      reinterpret_cast<void *>(GetProcAddress(spooler, "OpenPrinterA")));
  auto const remove =
      reinterpret_cast<BOOL(WINAPI *)(HANDLE)>(reinterpret_cast<void *>(GetProcAddress(spooler, "DeletePrinter")));
  auto const close =
      reinterpret_cast<BOOL(WINAPI *)(HANDLE)>(reinterpret_cast<void *>(GetProcAddress(spooler, "ClosePrinter")));
  PRINTER_DEFAULTSA wanted = {nullptr, nullptr, PRINTER_ALL_ACCESS};
  std::string own = name;
  HANDLE printer = nullptr;
  if (!open(own.data(), &printer, &wanted) || !remove(printer))
    throw std::runtime_error("the printer stays: error " + std::to_string(GetLastError()));
  close(printer);
}

void PrintTest::SetUp() {
  if (printedFolder().empty())
    GTEST_SKIP() << "there is no print server; ./dev test starts one";
}

} // namespace support
