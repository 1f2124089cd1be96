// Output of the single-bond commands: a two-column table of labelled values
// for people, or one JSON object for programs.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace kbond::cli {

std::string json_escape(const std::string& s);

class Report {
 public:
  // A number shown with `decimals` places (JSON keeps full precision).
  void number(const char* key, const char* label, double value, int decimals,
              const char* unit = "");
  void integer(const char* key, const char* label, long value);
  void text(const char* key, const char* label, const std::string& value);

  // An array of rows (schedule, cash flows, types): column keys and headers,
  // then each row's cells as already-formatted text; numeric columns are
  // written to JSON unquoted.
  void table(const char* key, std::vector<std::string> columns, std::vector<bool> numeric,
             std::vector<std::vector<std::string>> rows);

  void print(std::FILE* out, bool json) const;

 private:
  struct Field {
    std::string key, label, shown, json;
  };
  std::vector<Field> fields_;
  std::string table_key_;
  std::vector<std::string> columns_;
  std::vector<bool> numeric_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace kbond::cli
