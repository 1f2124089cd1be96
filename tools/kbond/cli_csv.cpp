#include "cli_csv.h"

namespace kbond::cli {

std::string_view without_bom(std::string_view line) {
  constexpr std::string_view kBom = "\xEF\xBB\xBF";
  if (line.substr(0, kBom.size()) == kBom) line.remove_prefix(kBom.size());
  return line;
}

char detect_separator(std::string_view header) {
  return header.find(';') != std::string_view::npos && header.find(',') == std::string_view::npos
             ? ';'
             : ',';
}

char separator_from_text(std::string_view text) {
  if (text == "tab" || text == "\\t") return '\t';
  if (text.size() != 1 || text[0] == '"' || text[0] == '\n' || text[0] == '\r') return 0;
  return text[0];
}

int split_csv(std::string_view line, char separator, CsvFields& out) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  size_t n = 0, i = 0;
  while (true) {
    if (n == kMaxCsvFields) return -1;
    if (i < line.size() && line[i] == '"') {
      const size_t close = line.find('"', i + 1);
      if (close == std::string_view::npos) return -1;
      out[n++] = line.substr(i + 1, close - i - 1);
      i = close + 1;
      if (i < line.size() && line[i] != separator) return -1;
    } else {
      const size_t next = line.find(separator, i);
      const size_t end = next == std::string_view::npos ? line.size() : next;
      std::string_view f = line.substr(i, end - i);
      while (!f.empty() && f.front() == ' ') f.remove_prefix(1);
      while (!f.empty() && f.back() == ' ') f.remove_suffix(1);
      out[n++] = f;
      i = end;
    }
    if (i >= line.size()) break;
    ++i;  // the separator
  }
  return static_cast<int>(n);
}

void append_csv_field(std::string& out, std::string_view field) {
  if (field.find_first_of(",\"\n") == std::string_view::npos) {
    out.append(field);
    return;
  }
  out.push_back('"');
  for (char c : field) {
    if (c == '"') out.push_back('"');
    out.push_back(c);
  }
  out.push_back('"');
}

}  // namespace kbond::cli
