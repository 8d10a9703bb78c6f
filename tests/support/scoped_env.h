#pragma once

#include <cstdlib>
#include <string>

/// Sets an environment variable for the time of a scope; null leaves it unset.
class ScopedEnv {
  public:
    ScopedEnv(const char *name, const char *value) : name_(name)
    {
        if (value != nullptr) {
            setenv(name, value, 1);
        } else {
            unsetenv(name);
        }
    }
    ~ScopedEnv() { unsetenv(name_.c_str()); }
    ScopedEnv(const ScopedEnv &) = delete;
    ScopedEnv &operator=(const ScopedEnv &) = delete;

  private:
    std::string name_;
};
