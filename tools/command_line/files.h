#pragma once

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace cli {

/// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor() { reset(); }

  int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  int release();
  void reset();

 private:
  int number_;
};

bool isFolder(const std::string& path);
bool isSameFile(const std::string& a, const std::string& b);

/// What a regular file is. Mapped, since few of its bytes are looked at; of a huge one the beginning.
int detectFile(const std::string& path, const struct stat& info);
/// Whether a file is a document of Word, whatever its age: nothing that may be overwritten.
bool isWordDocument(const std::string& path);

/// Opens a regular file for reading; else `error` tells why not. A pipe without a writer is not waited for.
Descriptor openRegular(const std::string& path, struct stat& info, std::string& error);

/// Appends what a file holds from where it stands to `content`; false if reading fails, with errno set.
bool readAll(int file, std::string& content);
bool writeAll(int file, const char* data, size_t length);

/// ".doc" of "a.b/letter.doc"; empty for none. A name that begins with its only dot has none.
std::string_view endingOf(std::string_view path);
/// Whether two texts are the same but for the case of ASCII letters.
bool isSameWord(std::string_view a, std::string_view b);

}  // namespace cli
