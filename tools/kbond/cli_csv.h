// CSV as spreadsheets write it: an optional UTF-8 byte-order mark before
// the header, commas or (in locales with a decimal comma) semicolons
// between fields, double quotes around fields that hold the separator.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kbond::cli {

inline constexpr size_t kMaxCsvFields = 32;
using CsvFields = std::array<std::string_view, kMaxCsvFields>;

// The line without a leading UTF-8 byte-order mark.
std::string_view without_bom(std::string_view line);

// The separator of a header line: ';' when it has semicolons and no
// commas (decimal-comma locales), else ','.
char detect_separator(std::string_view header);

// Reads a --separator value: one character, or "tab". 0 when unusable.
char separator_from_text(std::string_view text);

// Splits a line into views. Fields may be enclosed in double quotes (for
// names that hold the separator); doubled quotes inside are refused.
// Returns the field count, or -1 for a malformed line.
int split_csv(std::string_view line, char separator, CsvFields& out);

// Appends a CSV field to `out`, quoted when it holds a comma or a quote.
void append_csv_field(std::string& out, std::string_view field);

}  // namespace kbond::cli
