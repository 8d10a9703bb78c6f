#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "support/temp_dir.h"
#include "tyr/base/msg.h"
#include "tyr/base/prm.h"
#include "tyr/base/res.h"
#include "tyr/gks/gks.h"

// What the fuzz targets share: their bytes as a text or as a file, and where they run.

/// Pixels of the largest picture that a target reads whole: a head of a few bytes may tell of more.
inline constexpr int kFuzzPixels = 1 << 14;

inline std::string fuzz_text(const uint8_t *data, size_t size)
{
    return std::string(reinterpret_cast<const char *>(data), size);
}

/// Cuts the first line off a text.
inline std::string fuzz_line(std::string &text)
{
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string line = text.substr(0, end);
    text.erase(0, end + 1);
    return line.substr(0, line.find('\0'));
}

/// Writes bytes into a file of this process's own folder. @return its path
inline std::string fuzz_file(const std::string &bytes, const std::string &name = "input")
{
    static const TempDir folder;
    const std::string path = folder.file(name);
    std::remove(path.c_str()); // a file cut to nothing and written anew goes to the disk each time
    if (std::FILE *file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
    return path;
}

/// Silence (refusals come by the thousand) and this checkout's data. Once a process.
inline void fuzz_begin()
{
    [[maybe_unused]] static const bool begun = [] {
        PRM_clear(-9999);
        MSG_set_mask(0, 0);
        RES_put("file_path", TYR_SOURCE_DIR "/data");
        return true;
    }();
}

/// The same with a workstation of PostScript that goes nowhere.
inline void fuzz_begin_plot()
{
    fuzz_begin();
    [[maybe_unused]] static const bool begun = [] {
        gopen_gks(nullptr, 0);
        return gopen_ws(1, "/dev/null", kDevicePostScript) == 0;
    }();
}
