#pragma once
/// \file
/// Readers: sources of text lines.
///
/// A reader returns a text line by line. It works on bytes: it knows no character set and no byte order mark. A carriage
/// return, a line feed, and the two as a pair each end a line. Every line that is returned ends in exactly one line feed,
/// whatever the source has there; so does the last line of a file without a final terminator.
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
/// Threads: there are no locks. All text file readers of the process build their lines in one buffer, so only one thread at a
/// time may be inside GetLine, even on different readers.

#include "export.hpp"
#include "tools/object.hpp"
#include "tools/string.hpp"

#include <cstdint>

/// The abstract source of lines.
///
/// A class derived from it is a source of its own for KivTextParser, which calls Init once, then the others, and Done last.
class KIV_API KivLineReader : public KivObject {
public:
  ~KivLineReader() override;

  /// Opens the source. Called once, before any other operation. False when there is nothing to read.
  virtual bool Init() = 0;

  /// Called when the user has finished with the source.
  virtual bool Done() = 0;

  /// Sets \p line to the next line, with its line feed. False at the end of the source or when it fails; \p line should then
  /// be unchanged. A parser passes what is left of its line, and takes whatever it finds there afterwards for the line.
  virtual bool GetLine(SV::String & line) = 0;

  /// Position in the source, in bytes from 0: the end of the last line that was returned.
  virtual std::int64_t GetCurrentOffset() const = 0;

  /// Whether the last line that was returned ended in the pair of carriage return and line feed.
  virtual bool Is2CharsForNewline() const = 0;
};

/// A reader of a file, in blocks of 8192 bytes through one buffer.
///
/// The file stays open until the reader is destroyed. Until then others may read it but not write it, and a file that is
/// already open for writing cannot be opened. Nothing throws but for lack of memory; a failed read ends the reading silently.
class KIV_API KivFileReader : public KivLineReader {
public:
  KivFileReader(KivFileReader const &) = delete;
  KivFileReader & operator=(KivFileReader const &) = delete;

  /// Closes the file.
  ~KivFileReader() override;

  /// Does nothing and returns true: the file stays open.
  bool Done() override;

  /// Position of the next unread byte in the file. It has no meaning after a failed read.
  std::int64_t GetCurrentOffset() const override;

  bool Is2CharsForNewline() const override;

protected:
  /// Fills the buffer with the bytes that follow it in the file. At the end of the file the result is true, without any bytes.
  /// False when the end was reached before, no file is open, or the read fails; the reader is then exhausted until MoveTo.
  virtual bool _ImpRead();

public:
  /// Continues at \p offset, in bytes from the start of the file, even if the reader is exhausted. Beyond the end of the file
  /// the result is true, and the next GetLine returns false.
  /// False, with the reader unchanged, when no file is open or the offset is negative.
  /// False, with the reader exhausted, when the read at the offset fails.
  virtual bool MoveTo(std::int64_t offset);

  SV::String const & GetFilename() const { return filename; } ///< as given to the constructor
  char const * GetpFilename() const { return filename.c_str(); }

  /// The Windows file handle; INVALID_HANDLE_VALUE while no file is open.
  void * GetHandle() { return handle; }

  /// Position of the buffer's first byte in the file.
  std::int64_t GetAbsoluteBufferOffset() const { return absoluteBufferOffset; }

  /// Position of the next unread byte in the buffer.
  std::int64_t GetInBufferOffset() const;

  /// How much of the file has been read, from 0.0 to 100.0; 0.0 for an empty file and before Init.
  double GetCurrentPercent() const;

protected:
  /// \param filename  relative or absolute, in the system's code page; Init opens the file
  explicit KivFileReader(SV::String const & filename);

  /// Opens the file for reading, shared with other readers, and asks for its size. False when one of the two fails; where only
  /// the second does, the file stays open until the destructor.
  bool _ImpOpenFile();

  void * handle;
  SV::String filename;
  std::int64_t fileSize = 0;
  std::int64_t absoluteBufferOffset = 0;
  char * buffer;
  char * bufferPos = nullptr;  ///< the next unread byte
  char * bufferEnd = nullptr;  ///< one past the last valid byte
  std::int32_t bytesRead = -1; ///< by the last read; -1: none since construction or MoveTo; 0: exhausted
  bool is2CharsForNewline = true;
};

/// The lines of a text file.
///
/// The longest line has 8191 bytes before its terminator. A longer one ends the process: the system shows the reason in a box,
/// which no option suppresses. NULs are text like any other byte. A last line without a terminator is lost when the last block
/// of the file begins with a line break, and so is one that ends in a lone carriage return when that block begins with a line
/// feed.
class KIV_API KivTextFileReader : public KivFileReader {
public:
  /// \param filename  relative or absolute, in the system's code page; Init opens the file
  explicit KivTextFileReader(SV::String const & filename);

  /// Opens the file and reads its first block; an empty file is not a failure. False when it cannot be opened or read.
  bool Init() override;

  /// As in KivLineReader; \p line is unchanged when the result is false. A line that a failed read breaks off is dropped.
  bool GetLine(SV::String & line) override;

protected:
  /// A reader is destroyed by its owner, as a KivLineReader.
  ~KivTextFileReader() override;

private:
  bool _ImpCopyLine(std::int32_t & length);
  bool _ImpSkipTerminator();
  bool _ImpAdvance();
};
