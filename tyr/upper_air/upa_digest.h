#pragma once

#include <string>

#include "timefile/date.h"
#include "tyr/upper_air/report.h"

// Type 41, the binary digest, which is written only: 850, 700 and 500 hPa of each report in 12
// bytes of text and 33 numbers of 16 bits, little-endian, behind a heading "12:00Z XXX MAR  6
// 1999". 9999 stands for Missing; a number beyond 16 bits is cut to the nearest that fits.

namespace tyr {

std::string digest_heading(const DateRec &date);
std::string digest_report(const UpaReport &report);

} // namespace tyr
