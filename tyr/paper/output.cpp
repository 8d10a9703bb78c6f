#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <clocale>
#include <csignal>
#include <cstring>
#include <ctime>

#include <locale.h>

#include "tyr/base/date.h"
#include "tyr/base/file.h"
#include "tyr/base/msg.h"
#include "tyr/gks/gks.h"
#include "tyr/paper/output_private.h"

using namespace tyr;

namespace {

constexpr size_t kBufferSize = size_t{1} << 16;

/// The C locale for the time of a printf.
class CLocale {
  public:
    CLocale() : old_(uselocale(plain())) {}
    ~CLocale() { uselocale(old_); }
    CLocale(const CLocale &) = delete;
    CLocale &operator=(const CLocale &) = delete;

  private:
    static locale_t plain()
    {
        static locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }
    locale_t old_;
};

} // namespace

bool Output::open(const char *target)
{
    buffer_.clear();
    buffer_.reserve(kBufferSize + kFixedRoom);
    error_ = 0;
    kind_ = target[0] == '|' ? Kind::pipe : target[0] == '+' ? Kind::append : Kind::file;
    name_ = kind_ == Kind::file ? target : target + 1;
    errno = 0;
    if (kind_ == Kind::pipe) {
        std::fflush(nullptr); // or the command's own output would come ahead of ours
    }
    if (kind_ == Kind::file) {
        stream_ = whole_.open(target) ? whole_.stream() : nullptr;
    } else {
        stream_ = kind_ == Kind::append ? FILE_open(name_.c_str(), "a") : FILE_open(target, "w");
    }
    if (stream_ != nullptr && kind_ == Kind::pipe) {
        old_sigpipe_ = std::signal(SIGPIPE, SIG_IGN); // a reader that dies is an error, not our end
    }
    return stream_ != nullptr;
}

void Output::flush()
{
    if (!buffer_.empty() && error_ == 0) {
        errno = 0;
        const size_t sent = std::fwrite(buffer_.data(), 1, buffer_.size(), stream_);
        // straight through, so that a process that forks never sends anything twice
        if (sent != buffer_.size() || std::fflush(stream_) != 0) {
            error_ = errno != 0 ? errno : EIO;
        }
    }
    buffer_.clear();
}

void Output::reserve(size_t more)
{
    if (buffer_.size() + more > kBufferSize) {
        flush();
    }
}

Output &Output::operator<<(std::string_view text)
{
    if (stream_ != nullptr) {
        reserve(text.size());
        buffer_ += text;
    }
    return *this;
}

Output &Output::operator<<(int number)
{
    std::array<char, 16> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return *this << std::string_view(text.data(), static_cast<size_t>(end - text.data()));
}

Output &Output::operator<<(Fixed number)
{
    std::array<char, kFixedRoom> text;
    const char *end = write_fixed(number, text.data());
    return *this << std::string_view(text.data(), static_cast<size_t>(end - text.data()));
}

void Output::byte(unsigned value)
{
    const char c = static_cast<char>(static_cast<unsigned char>(value));
    *this << std::string_view(&c, 1);
}

void Output::vprint(const char *format, std::va_list args)
{
    if (stream_ == nullptr) {
        return;
    }
    const CLocale locale;
    std::va_list again;
    va_copy(again, args);
    std::array<char, kFixedRoom> text;
    const int length = std::vsnprintf(text.data(), text.size(), format, args);
    if (length >= static_cast<int>(text.size())) {
        std::string longer(static_cast<size_t>(length) + 1, '\0');
        std::vsnprintf(longer.data(), longer.size(), format, again);
        longer.pop_back();
        *this << longer;
    } else if (length > 0) {
        *this << std::string_view(text.data(), static_cast<size_t>(length));
    }
    va_end(again);
}

void Output::print(const char *format, ...)
{
    std::va_list args;
    va_start(args, format);
    vprint(format, args);
    va_end(args);
}

bool Output::close(const char *routine)
{
    flush();
    errno = 0;
    bool closed = true;
    if (kind_ != Kind::file) {
        closed = FILE_close(stream_) == 0;
    } else if (error_ == 0) {
        closed = whole_.keep() == 0;
    }
    const int why = errno;
    whole_.drop();
    if (kind_ == Kind::pipe) {
        std::signal(SIGPIPE, old_sigpipe_);
        // a process that went into the background isn't the command's parent and can't ask it
        closed = closed || why == ECHILD;
    }
    stream_ = nullptr;
    if (error_ != 0 || (!closed && kind_ != Kind::pipe)) {
        MSG_out(kMsgWarn, "%s: unable to write %s: %s\n", routine, name_.c_str(),
                std::strerror(error_ != 0 ? error_ : why));
        return false;
    }
    if (!closed) {
        MSG_out(kMsgWarn, "%s: command failed: %s\n", routine, name_.c_str());
    }
    return closed;
}

void tyr::tell_target(const Output &output)
{
    switch (output.kind()) {
    case Output::Kind::pipe:
        MSG_out(kMsgMess, "Spooling to: %s\n", output.name().c_str());
        break;
    case Output::Kind::append:
        MSG_out(kMsgMess, "Appending to: %s\n", output.name().c_str());
        break;
    case Output::Kind::file:
        MSG_out(kMsgMess, "Creating: %s\n", output.name().c_str());
        break;
    }
}

void tyr::report_unopened(const char *what, const std::string &target)
{
    const int why = errno;
    gerror("gopen_ws", "%s\n", what);
    MSG_out(kMsgWarn, "gopen_ws: %s: %s\n", target.c_str(), std::strerror(why));
}

std::string tyr::creation_date()
{
    DateRec now;
    TIME_header_now(&now);
    const std::time_t seconds = TIME_to_seconds(&now);
    char text[32] = "";
    ctime_r(&seconds, text);
    return text;
}

std::string tyr::comment_text(std::string_view text)
{
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
    return line;
}
