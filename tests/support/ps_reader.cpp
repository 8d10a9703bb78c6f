#include "support/ps_reader.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace {

constexpr double kPointsPerInch = 72.0;
constexpr double kDot = 0.33;

struct Run {
    std::vector<PsPoint> points;
    bool closed = false;
};

class Reader {
  public:
    PsPage read(const std::string &bytes)
    {
        std::istringstream lines(bytes);
        std::string line;
        while (std::getline(lines, line) && page_.error.empty()) {
            line_++;
            if (!line.empty() && line[0] == '%') {
                comment(line);
            } else {
                read_words(line);
            }
        }
        if (page_.error.empty() && !stack_.empty()) {
            fail("operands left over");
        }
        return page_;
    }

  private:
    void fail(const std::string &what)
    {
        if (page_.error.empty()) {
            page_.error = "line " + std::to_string(line_) + ": " + what;
        }
    }

    void comment(const std::string &line)
    {
        const auto begins = [&](const char *prefix) { return line.rfind(prefix, 0) == 0; };
        if (begins("%%TE:")) {
            PsText text;
            int end = 0;
            if (std::sscanf(line.c_str() + 5, "%lf %lf %n", &text.x, &text.y, &end) != 2) {
                fail("text comment");
            }
            text.text = line.substr(5 + static_cast<size_t>(end));
            text.message = message_;
            page_.texts.push_back(text);
            text_ = static_cast<int>(page_.texts.size()) - 1;
        } else if (begins("%%PL:") || begins("%%PM:") || begins("%%FA:") || begins("%%CLR")) {
            text_ = -1;
        } else {
            if (begins("%%Message: ")) {
                message_ = line.substr(11);
                text_ = -1;
            }
            page_.comments.push_back(line);
        }
    }

    void read_words(const std::string &line)
    {
        std::istringstream words(line);
        std::string word;
        while (words >> word && page_.error.empty()) {
            if (word[0] == '/') {
                define(word, words);
            } else if (word[0] == '[') {
                array(word, words);
            } else {
                execute(word);
            }
        }
    }

    void define(const std::string &name, std::istringstream &words)
    {
        std::string rest;
        std::getline(words, rest);
        if (rest.size() < 4 || rest.substr(rest.size() - 4) != " def") {
            fail("definition of " + name);
        }
    }

    void array(std::string word, std::istringstream &words)
    {
        array_.clear();
        word.erase(0, 1);
        while (true) {
            const bool last = !word.empty() && word.back() == ']';
            if (last) {
                word.pop_back();
            }
            if (!word.empty()) {
                array_.push_back(std::atof(word.c_str()));
            }
            if (last) {
                return;
            }
            if (!(words >> word)) {
                fail("array without end");
                return;
            }
        }
    }

    /// Operands are popped in reverse; a missing one is an error.
    double pop()
    {
        if (stack_.empty()) {
            fail("stack underflow");
            return 0.0;
        }
        const double value = stack_.back();
        stack_.pop_back();
        return value;
    }

    void execute(const std::string &word)
    {
        char *end = nullptr;
        const double number = std::strtod(word.c_str(), &end);
        if (*end == '\0') {
            stack_.push_back(number);
            return;
        }
        if (!execute_path(word) && !execute_state(word) && !execute_page(word)) {
            fail("unknown word " + word);
        }
    }

    bool execute_path(const std::string &word)
    {
        if (word == "np") {
            path_.clear();
        } else if (word == "mv") {
            const double y = pop();
            path_.push_back({{{pop(), y}}, false});
        } else if (word == "ln") {
            const double y = pop();
            const double x = pop();
            if (path_.empty()) {
                fail("no current point");
            } else {
                path_.back().points.push_back({x, y});
            }
        } else if (word == "cp") {
            if (!path_.empty()) {
                path_.back().closed = true;
            }
        } else if (word == "stroke" || word == "fill") {
            paint(word == "fill");
        } else if (word == "initclip") {
            clip_ = {};
        } else if (word == "clip") {
            set_clip();
        } else {
            return false;
        }
        return true;
    }

    bool execute_state(const std::string &word)
    {
        if (word == "setgray") {
            rgb_.fill(pop());
        } else if (word == "setrgbcolor") {
            rgb_[2] = pop();
            rgb_[1] = pop();
            rgb_[0] = pop();
        } else if (word == "dot") {
            stack_.push_back(pop() * kDot);
        } else if (word == "inch") {
            stack_.push_back(pop() * kPointsPerInch);
        } else if (word == "lw") {
            width_ = pop();
        } else if (word == "setdash") {
            pop();
            dash_ = array_;
        } else if (word == "setlinejoin") {
            pop();
        } else {
            return false;
        }
        return true;
    }

    bool execute_page(const std::string &word)
    {
        if (word == "rotate") {
            page_.rotation = pop();
        } else if (word == "translate") {
            const double y = pop();
            page_.origin = {pop(), y};
        } else if (word == "scale") {
            const double y = pop();
            page_.scale = {pop(), y};
        } else if (word == "showpage") {
            page_.shown = true;
        } else if (word == "dict") {
            pop();
        } else if (word != "begin" && word != "end" && word != "saveobj" && word != "restore") {
            return false;
        }
        return true;
    }

    void paint(bool fill)
    {
        for (const Run &run : path_) {
            if (run.points.size() < 2 && !fill) {
                continue; // paints nothing
            }
            page_.strokes.push_back(
                {fill, run.closed, rgb_, width_, dash_, run.points, clip_, text_, message_});
        }
        path_.clear();
    }

    void set_clip()
    {
        if (path_.empty()) {
            fail("clip without a path");
            return;
        }
        const std::vector<PsPoint> &p = path_.front().points;
        clip_ = {p[0][0], p[0][1], p[0][0], p[0][1]};
        for (const PsPoint &point : p) {
            clip_[0] = std::min(clip_[0], point[0]);
            clip_[1] = std::min(clip_[1], point[1]);
            clip_[2] = std::max(clip_[2], point[0]);
            clip_[3] = std::max(clip_[3], point[1]);
        }
    }

    PsPage page_;
    int line_ = 0;
    std::vector<double> stack_, array_, dash_;
    std::vector<Run> path_;
    std::array<double, 3> rgb_{};
    std::array<double, 4> clip_{};
    double width_ = 1.0;
    int text_ = -1;
    std::string message_;
};

} // namespace

PsPage read_ps(const std::string &bytes)
{
    return Reader().read(bytes);
}

std::vector<PsStroke> strokes_of(const PsPage &page, int text)
{
    std::vector<PsStroke> out;
    std::copy_if(page.strokes.begin(), page.strokes.end(), std::back_inserter(out),
                 [&](const PsStroke &stroke) { return stroke.text == text; });
    return out;
}

std::vector<std::string> describe(const std::vector<PsStroke> &strokes)
{
    std::vector<std::string> out;
    char text[100];
    for (const PsStroke &s : strokes) {
        std::snprintf(text, sizeof text, "%s %.2f,%.2f,%.2f w%.2f [", s.filled ? "fill" : "line",
                      s.rgb[0], s.rgb[1], s.rgb[2], s.width);
        std::string line = text;
        for (size_t i = 0; i < s.dash.size(); i++) {
            std::snprintf(text, sizeof text, i > 0 ? " %g" : "%g", s.dash[i]);
            line += text;
        }
        line += "]";
        for (const PsPoint &p : s.points) {
            std::snprintf(text, sizeof text, " %.2f,%.2f", p[0], p[1]);
            line += text;
        }
        out.push_back(line);
    }
    return out;
}
