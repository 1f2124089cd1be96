// Date input and output for the command line: ISO dates (2031-05-15) and
// the library's date serials (1 = 1 January 1900, proleptic Gregorian, so
// 1 March 1900 is 60 - unlike spreadsheet serials, which count a
// 29 February 1900 that never existed).
#pragma once

#include <cstdint>
#include <string_view>

namespace kbond::cli {

// Parses "YYYY-MM-DD" or a positive serial. Returns false on anything else
// (including impossible calendar dates such as 2023-02-29).
bool parse_date(std::string_view text, int32_t* serial);

// Writes the ISO form of a serial into buf (at least 32 bytes); serials
// outside 1..1825000 print as the bare number.
const char* format_date(int32_t serial, char* buf);

}  // namespace kbond::cli
