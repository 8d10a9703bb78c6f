#pragma once

#include <string>

namespace tyr {

/// A file that is being written: it takes its name only when all of it stands. Until then a new
/// file is written beside its place under a name of its own; one that is added to is cut back to
/// its old length on failure. Standard streams, pipes and devices are written as they are.
class WrittenFile {
  public:
    /// `number` parts the files that one process writes at a time.
    WrittenFile(std::string name, bool append, int number);

    const std::string &path() const { return path_; } ///< where the bytes go
    /// Call it behind the closing of the file. @return whether the file stands under its name
    bool finish(bool is_good) const;

  private:
    std::string name_;
    std::string path_;
    long old_size_ = -1; ///< of a file that is added to
};

} // namespace tyr
