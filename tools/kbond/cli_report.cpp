#include "cli_report.h"

#include <algorithm>

namespace kbond::cli {

std::string json_escape(const std::string& s) {
  std::string out;
  out.reserve(s.size() + 2);
  for (char c : s) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\t': out += "\\t"; break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\u%04x", c);
          out += buf;
        } else {
          out += c;
        }
    }
  }
  return out;
}

void Report::number(const char* key, const char* label, double value, int decimals,
                    const char* unit) {
  char shown[64], json[64];
  std::snprintf(shown, sizeof shown, "%.*f%s", decimals, value, unit);
  std::snprintf(json, sizeof json, "%.15g", value);
  fields_.push_back({key, label, shown, json});
}

void Report::integer(const char* key, const char* label, long value) {
  const std::string v = std::to_string(value);
  fields_.push_back({key, label, v, v});
}

void Report::text(const char* key, const char* label, const std::string& value) {
  std::string quoted(1, '"');
  quoted.append(json_escape(value)).push_back('"');
  fields_.push_back({key, label, value, std::move(quoted)});
}

void Report::table(const char* key, std::vector<std::string> columns, std::vector<bool> numeric,
                   std::vector<std::vector<std::string>> rows) {
  table_key_ = key;
  columns_ = std::move(columns);
  numeric_ = std::move(numeric);
  rows_ = std::move(rows);
}

void Report::print(std::FILE* out, bool json) const {
  if (json) {
    std::fprintf(out, "{");
    const char* sep = "";
    for (const auto& f : fields_) {
      std::fprintf(out, "%s\"%s\": %s", sep, f.key.c_str(), f.json.c_str());
      sep = ", ";
    }
    if (!table_key_.empty()) {
      std::fprintf(out, "%s\"%s\": [", sep, table_key_.c_str());
      for (size_t r = 0; r < rows_.size(); ++r) {
        std::fprintf(out, "%s{", r ? ", " : "");
        for (size_t c = 0; c < columns_.size(); ++c) {
          const std::string& cell = rows_[r][c];
          if (numeric_[c])  // "-" marks a missing number
            std::fprintf(out, "%s\"%s\": %s", c ? ", " : "", columns_[c].c_str(),
                         cell == "-" ? "null" : cell.c_str());
          else
            std::fprintf(out, "%s\"%s\": \"%s\"", c ? ", " : "", columns_[c].c_str(),
                         json_escape(cell).c_str());
        }
        std::fprintf(out, "}");
      }
      std::fprintf(out, "]");
    }
    std::fprintf(out, "}\n");
    return;
  }
  size_t label_width = 0;
  for (const auto& f : fields_) label_width = std::max(label_width, f.label.size());
  for (const auto& f : fields_)
    std::fprintf(out, "%-*s  %s\n", static_cast<int>(label_width), f.label.c_str(),
                 f.shown.c_str());
  if (table_key_.empty()) return;
  if (!fields_.empty()) std::fprintf(out, "\n");
  std::vector<size_t> width(columns_.size());
  for (size_t c = 0; c < columns_.size(); ++c) {
    width[c] = columns_[c].size();
    for (const auto& row : rows_) width[c] = std::max(width[c], row[c].size());
  }
  auto line = [&](const std::vector<std::string>& cells) {
    std::string s;
    for (size_t c = 0; c < cells.size(); ++c) {
      const int w = static_cast<int>(width[c]);
      char buf[256];
      std::snprintf(buf, sizeof buf, numeric_[c] ? "%*s" : "%-*s", w, cells[c].c_str());
      if (c) s += "  ";
      s += buf;
    }
    while (!s.empty() && s.back() == ' ') s.pop_back();
    std::fprintf(out, "%s\n", s.c_str());
  };
  line(columns_);
  for (const auto& row : rows_) line(row);
}

}  // namespace kbond::cli
