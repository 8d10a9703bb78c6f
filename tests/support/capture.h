#pragma once

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

/// What an action writes to standard output.
template <class Action> std::string shown_by(Action action)
{
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

/// What an action writes to standard error.
template <class Action> std::string told_by(Action action)
{
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

/// Makes a text the standard input of this process.
inline void type_in(const std::string &text)
{
    const TempDir folder; // an open file outlives its name
    ASSERT_TRUE(std::freopen(folder.write("input", text).c_str(), "r", stdin));
}
