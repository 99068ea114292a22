#pragma once
/// \file
/// Sources of text lines.
///
/// A reader delivers a text one line at a time. It works on bytes and knows neither character set nor byte order mark. A
/// carriage return, a line feed, and the pair of both each end a line; every line handed out ends in exactly one line feed,
/// whatever the source had there, also the last line of a file that has no terminator.
///
/// \code
///   auto * const reader = new KivTextFileReader("orders.txt");
///   std::unique_ptr<KivLineReader> owner(reader);
///   SV::String line;
///   if (reader->Init())
///     while (reader->GetLine(line))
///       use(line);                                    // "first line\n", "second line\n", ...
///   reader->Done();
/// \endcode
///
/// Threads: no locks. All text file readers of the process assemble their lines in one area, so only one thread at a time
/// may be inside GetLine, even on different readers.

#include "export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <cstdint>

/// The abstract source of lines.
class KIV_API KivLineReader : public KivObject {
public:
  ~KivLineReader() override;

  /// Makes the source ready. Called once, before any other operation. False: there is nothing to read.
  virtual bool Init() = 0;

  /// The user is through with the source.
  virtual bool Done() = 0;

  /// Puts the next line, with its line feed, into \p line. False at the end of the source or when it fails; \p line then
  /// stays as it was.
  virtual bool GetLine(SV::String & line) = 0;

  /// Position in the source, in bytes from 0: behind the line that was delivered last.
  virtual std::int64_t GetCurrentOffset() const = 0;

  /// Whether the line that was delivered last ended in the pair of carriage return and line feed.
  virtual bool Is2CharsForNewline() const = 0;
};

/// A source with a file behind it, read in blocks of 8192 bytes through one buffer.
///
/// The file stays open until the reader is destroyed. Until then others may read it but not write it, and a file that is open
/// for writing can't be opened. Nothing here throws; a read that fails ends the reading silently.
class KIV_API KivFileReader : public KivLineReader {
public:
  KivFileReader(KivFileReader const &) = delete;
  KivFileReader & operator=(KivFileReader const &) = delete;

  /// Closes the file.
  ~KivFileReader() override;

  /// True. The file stays open.
  bool Done() override;

  /// Position of the next unread byte in the file. After a read that failed it has no meaning.
  std::int64_t GetCurrentOffset() const override;

  bool Is2CharsForNewline() const override;

protected:
  /// Refills the buffer with the bytes behind it. At the end of the file the result is true, with no bytes. False when the
  /// end was already seen, no file is open, or the read fails; the reader is then exhausted until MoveTo.
  virtual bool _ImpRead();

public:
  /// Continues at \p offset, in bytes from the start of the file, also behind a reader's end. Beyond the end of the file the
  /// result is true and the next GetLine gives false. False, with the reader as it was: no file is open, or the offset is
  /// negative. False, with the reader exhausted: the read there fails.
  virtual bool MoveTo(std::int64_t offset);

  SV::String const & GetFilename() const { return filename; } ///< as the constructor got it
  char const * GetpFilename() const { return filename.c_str(); }

  /// The Windows file handle; INVALID_HANDLE_VALUE while no file is open.
  void * GetHandle() { return handle; }

  /// Position of the buffer's first byte in the file.
  std::int64_t GetAbsoluteBufferOffset() const { return absoluteBufferOffset; }

  /// Position of the next unread byte in the buffer.
  std::int64_t GetInBufferOffset() const;

  /// How much of the file has been read, from 0.0 to 100.0; 0.0 for an empty file.
  double GetCurrentPercent() const;

protected:
  /// \param filename  a file in the system's code page, relative or absolute; it is opened by Init
  explicit KivFileReader(SV::String const & filename);

  /// Opens the file for reading, shared with other readers, and takes its size. False when one of them fails.
  bool _ImpOpenFile();

  void * handle;
  SV::String filename;
  std::int64_t fileSize = 0;
  std::int64_t absoluteBufferOffset = 0;
  char * buffer;
  char * bufferPos = nullptr;  ///< the next unread byte
  char * bufferEnd = nullptr;  ///< behind the last valid byte
  std::int32_t bytesRead = -1; ///< by the last read; -1: none since construction or a seek; 0: exhausted
  bool is2CharsForNewline = true;
};

/// Lines of a text file.
///
/// The longest line has 8191 bytes in front of its terminator: a longer one ends the process with a message. Bytes of value 0
/// are text like any other. A last line without a terminator is lost when the last block of the file begins with a line
/// break, and so is one that ends in a lone carriage return when that block begins with a line feed.
class KIV_API KivTextFileReader : public KivFileReader {
public:
  /// \param filename  a file in the system's code page, relative or absolute; it is opened by Init
  explicit KivTextFileReader(SV::String const & filename);

  /// Opens the file and reads its first block; an empty file is no failure. False when it can't be opened or read.
  bool Init() override;

  bool GetLine(SV::String & line) override;

protected:
  /// A reader is destroyed through its owner, as a KivLineReader.
  ~KivTextFileReader() override;

private:
  bool _ImpCopyLine(std::int32_t & length);
  bool _ImpSkipTerminator();
  bool _ImpAdvance();
};
