#pragma once

#include <string>

/// Value of an X11 default of the application name; empty where there is none, or no X11 device.
std::string gx_default(const char *option);
