#include "programs/tyrplay/ground.h"

#include <array>
#include <cstdio>
#include <map>

#include "tyr/base/file.h"

namespace {

constexpr int kLineRoom = 256; ///< a longer line is points or text, whose head is enough

enum Shade { kOther, kWhite, kBlack };

Shade shade_of(const float rgb[3])
{
    const bool is_white = rgb[0] == 1.0F && rgb[1] == 1.0F && rgb[2] == 1.0F;
    const bool is_black = rgb[0] == 0.0F && rgb[1] == 0.0F && rgb[2] == 0.0F;
    return is_white ? kWhite : is_black ? kBlack : kOther;
}

/// Colours as the records of a file set and use them.
class Colours {
  public:
    void take(const char *line)
    {
        std::array<char, 10> word{};
        int index = 0;
        float rgb[3];
        if (std::sscanf(line, "%9s", word.data()) != 1) {
            return;
        }
        const std::string name = word.data();
        if (name == "CLR" && std::sscanf(line, "%*s %*d %9d %15f %15f %15f", &index, &rgb[0],
                                         &rgb[1], &rgb[2]) == 4) {
            shades_[index] = shade_of(rgb);
        } else if (name == "PL_CLR" || name == "TE_CLR") {
            std::sscanf(line, "%*s %9d", name == "PL_CLR" ? &line_ : &text_);
        } else if (name == "PL" || name == "TE") {
            use(name == "PL" ? line_ : text_);
        }
    }

    Ground ground() const
    {
        return has_white_ == has_black_ ? Ground::kAny
               : has_white_             ? Ground::kDark
                                        : Ground::kLight;
    }

  private:
    void use(int index)
    {
        const auto found = shades_.find(index);
        const Shade shade = found == shades_.end() ? kOther : found->second;
        has_white_ = has_white_ || shade == kWhite;
        has_black_ = has_black_ || shade == kBlack;
    }

    std::map<int, Shade> shades_;
    int line_ = 1, text_ = 1;
    bool has_white_ = false, has_black_ = false;
};

} // namespace

Ground ground_of(const std::string &path)
{
    const FilePtr file(FILE_open(path.c_str(), "r"));
    Colours colours;
    std::array<char, kLineRoom> line{};
    while (file && std::fgets(line.data(), kLineRoom, file.get()) != nullptr) {
        colours.take(line.data());
    }
    return colours.ground();
}
