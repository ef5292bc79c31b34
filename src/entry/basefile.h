#pragma once

#include <string>

class OutputFiles;

/// Paths and folders of the output, by narrow paths. A null path is a failure everywhere.
struct basefile {
  /// Appends "/" unless the last character is "/" or "\".
  static void MakeSureDirIsRight(std::string& dir);

  /// Creates or truncates a file of the output. True on success.
  static bool CreateFile(OutputFiles& files, const char* path);

  /// Makes all missing folders of `path`, where only "/" parts the names. False when one of them can neither
  /// be opened nor made, and errno tells why.
  static bool CreateDir(const char* path);

  /// Removes all that a folder holds; the folder remains. False when it cannot be opened as a folder, or at
  /// the first entry that cannot be removed.
  ///
  /// Nothing outside the folder is touched, whoever changes it meanwhile: a symbolic link in it is removed
  /// and not followed. Neither is one followed in the place of the folder itself: it is removed, so that the
  /// caller can make a folder there, and the result is false.
  static bool DelFilesInDir(const char* path);

  /// The same, and removes the folder as well. A symbolic link in its place is removed (result true).
  static bool DelDir(const char* path);

  /// Splits at the last "." and the last "/" or "\" before it: "a/b.c" gives "a/", "b" and "c". Returns 1,
  /// and nothing, for a path whose last "." is its first character, else 0. A path without "." is taken
  /// whole, folders and all, as `name` and as `ext`.
  static int splitpath(const char* path, std::string& dir, std::string& name, std::string& ext);
};
