// The kbond commands. Each returns the process exit code:
// 0 success, 1 the library reported an error (or a batch row failed),
// 2 the command line itself was wrong.
#pragma once

#include "cli_options.h"

namespace kbond::cli {

constexpr int kExitOk = 0;
constexpr int kExitLibraryError = 1;
constexpr int kExitUsage = 2;

int cmd_price(const Options& o);
int cmd_yield(const Options& o);
int cmd_accrued(const Options& o);
int cmd_risk(const Options& o);
int cmd_schedule(const Options& o);
int cmd_cashflows(const Options& o);
int cmd_type(const Options& o);
int cmd_types(const Options& o);
int cmd_batch(const Options& o);

// Prints "kbond CMD: error CODE (CONSTANT): sentence." on stderr, and the
// same as a JSON object on stdout when --json was given.
int report_library_error(const char* command, const char* what, int32_t code, bool json);
int report_usage_error(const char* command, const std::string& why);

}  // namespace kbond::cli
