#pragma once

#include <string>

#include "support/ps_reader.h"
#include "support/temp_dir.h"

/// A workstation of the kernel, open on a file of its own for the time of a test. The fonts are
/// those of data/; transformation 0 (the unit square) is selected.
class KernelPlot {
  public:
    /// `words` are device words behind the file name, "color,port".
    explicit KernelPlot(int device, const std::string &words = "");
    ~KernelPlot();
    KernelPlot(const KernelPlot &) = delete;
    KernelPlot &operator=(const KernelPlot &) = delete;

    /// Whether the workstation opened.
    bool opened() const { return opened_; }
    const std::string &path() const { return path_; }
    /// Closes the workstation; what it wrote.
    std::string finish();
    /// The same as a page of PostScript.
    PsPage page() { return read_ps(finish()); }

  private:
    TempDir dir_;
    std::string path_;
    bool opened_ = false;
};
