#include <algorithm>
#include <array>
#include <string>

#include "tyr/base/file.h"
#include "tyr/names/name_mask_private.h"

using namespace tyr;

namespace {

constexpr int kMaxMaskWidth = 100;

/// A mask in the making: pieces of plain text, quoted where needed, and wildcards.
class ShellMask {
  public:
    void add_plain(std::string_view text) { plain_ += text; }
    void add_wild(std::string_view text)
    {
        flush();
        mask_ += text;
    }
    std::string finish()
    {
        flush();
        return mask_;
    }

  private:
    void flush();

    std::string mask_;
    std::string plain_;
};

void ShellMask::flush()
{
    constexpr std::string_view kHarmless = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                           "0123456789_./-+:,@%";
    if (mask_.empty() && !plain_.empty() && plain_[0] == '~') {
        std::array<char, kFileNameRoom> expanded;
        FILE_expand(plain_.c_str(), expanded.data());
        plain_ = expanded.data();
    }
    if (plain_.find_first_not_of(kHarmless) == std::string::npos) {
        mask_ += plain_;
    } else {
        mask_ += '\'';
        for (const char c : plain_) {
            if (c == '\'') {
                mask_ += "'\\''";
            } else {
                mask_ += c;
            }
        }
        mask_ += '\'';
    }
    plain_.clear();
}

void add_to_mask(ShellMask &mask, const TemplateElement &element, const TemplateValues &values)
{
    switch (element.kind) {
    case TemplateKind::literal:
        mask.add_plain(std::string(1, element.letter));
        break;
    case TemplateKind::star:
        mask.add_wild("*");
        break;
    case TemplateKind::open:
    case TemplateKind::close:
        break;
    case TemplateKind::percent:
        mask.add_plain("%");
        break;
    case TemplateKind::date:
        mask.add_wild(date_element_mask(element.letter));
        break;
    case TemplateKind::extension:
        values.extension.empty() ? mask.add_wild("*") : mask.add_plain(values.extension);
        break;
    case TemplateKind::path:
    case TemplateKind::resource:
        mask.add_plain(template_path(element));
        break;
    case TemplateKind::word:
        if (const std::string value = template_path(element); !value.empty()) {
            mask.add_plain(value);
        } else {
            mask.add_wild("*");
        }
        break;
    case TemplateKind::key: {
        const std::string &value = values.keys[static_cast<unsigned char>(element.letter)];
        if (!value.empty()) {
            mask.add_plain(value);
        } else if (element.number > 0) {
            mask.add_wild(
                std::string(static_cast<size_t>(std::min(element.number, kMaxMaskWidth)), '?'));
        } else {
            mask.add_wild("*");
        }
        break;
    }
    }
}

} // namespace

std::string tyr::shell_mask(std::string_view text, const TemplateValues &values)
{
    ShellMask mask;
    for (const TemplateElement &element : template_elements(text)) {
        add_to_mask(mask, element, values);
    }
    return mask.finish();
}
