#pragma once

#include <string>

/// A fresh folder for one test, removed with all it holds at the end.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;

    const std::string &path() const { return path_; }
    /// Path of a name inside the folder.
    std::string file(const std::string &name) const { return path_ + "/" + name; }
    /// Writes a file with the given bytes and returns its path.
    std::string write(const std::string &name, const std::string &bytes) const;

  private:
    std::string path_;
};

/// All bytes of a file; empty where it can't be read.
std::string read_file(const std::string &path);
