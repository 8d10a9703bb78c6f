#pragma once

#include <string>
#include <vector>

/// A program at a terminal of its own: a pseudo-terminal, typed to line by line.
class Terminal {
  public:
    /// Starts a command (first word: program path).
    explicit Terminal(const std::vector<std::string> &words);
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    /// Waits until the screen shows a text behind what was waited for before.
    bool wait_for(const std::string &text);
    /// Types a line.
    void type(const std::string &line);
    /// Waits for the end. @return the exit code, -1 where it had to be killed
    int finish();
    /// All that was shown so far, with line ends of the terminal.
    const std::string &screen() const { return screen_; }

  private:
    bool read_some();

    int fd_ = -1;
    int pid_ = -1;
    size_t seen_ = 0;
    std::string screen_;
};
