// kbond: bond analytics from the command line, a client of the k_bond C
// interface.
#include <cstdio>
#include <cstring>
#include <string>

#include "cli_commands.h"
#include "k_bond.h"

namespace {

using namespace kbond::cli;

constexpr const char* kBondFlags =
    "Bond flags:\n"
    "  --coupon RATE         annual coupon rate, in percent (4.25) or with --decimal (0.0425)\n"
    "  --maturity DATE       maturity date\n"
    "  --settlement DATE     settlement date (also --settle)\n"
    "  --type TYPE           bond type: a code (40), a catalogue name (\"Gilt\") or a\n"
    "                        nickname (ust, gilt, bund, oat, btp, jgb, ...); default 0,\n"
    "                        U.S. Treasury. 'kbond types' lists them all\n"
    "  --frequency N         coupons per year 1, 2, 3, 4, 6 or 12 (default: the type's)\n"
    "  --dated DATE          start of interest accrual (default: derived from the schedule)\n"
    "  --first-coupon DATE   first coupon date (default: derived from maturity)\n"
    "  --redemption VALUE    redemption value per 100 of face (default 100)\n"
    "Dates are ISO dates (2031-05-15) or date serials, serial 1 = 1900-01-01 (so\n"
    "1900-03-01 is 60; spreadsheet serials are one higher from March 1900 on).\n"
    "Output flags:\n"
    "  --decimal             coupons and yields in and out as decimal fractions (0.0425)\n"
    "                        instead of percent (4.25)\n"
    "  --json                one JSON object on standard output instead of a table\n"
    "Rates below 0.2 in percent (or above 1 with --decimal) print a warning that the\n"
    "unit looks wrong. Prices take decimals or U.S. Treasury 32nds: 98-01 is 98 1/32,\n"
    "98-01+ adds half a 32nd, 98-012 two eighths of a 32nd.\n";

struct Command {
  const char* name;
  const char* brief;
  const char* usage;
  const char* summary;
  int (*run)(const Options&);
  bool bond_flags;
};

constexpr Command kCommands[] = {
    {"price", "clean price, accrued interest and dirty price from a yield",
     "kbond price BOND-FLAGS --yield RATE",
     "Clean price, accrued interest and dirty price per 100 from a yield (percent, or decimal\n"
     "with --decimal), compounded as the bond type quotes it.",
     cmd_price, true},
    {"yield", "yield to maturity from the clean price",
     "kbond yield BOND-FLAGS --price PRICE",
     "Yield to maturity from the clean price per 100.", cmd_yield, true},
    {"accrued", "accrued interest at settlement",
     "kbond accrued BOND-FLAGS",
     "Accrued interest per 100 at settlement (negative when the bond trades ex-dividend).",
     cmd_accrued, true},
    {"risk", "durations, convexity, PVBP and the yield value of a 32nd",
     "kbond risk BOND-FLAGS (--yield RATE | --price PRICE)",
     "Price, yield, accrued interest, modified and Macaulay duration (years), convexity,\n"
     "PVBP (price change per 100 for one basis point) and the yield value of a 32nd.",
     cmd_risk, true},
    {"schedule", "coupon dates and the ex-dividend date",
     "kbond schedule BOND-FLAGS",
     "Previous and next coupon dates, the ex-dividend date and every remaining coupon date.",
     cmd_schedule, true},
    {"cashflows", "the remaining cash flows",
     "kbond cashflows BOND-FLAGS",
     "The remaining cash flows per 100 of face: date, coupon, principal, total and the\n"
     "time from settlement in coupon periods.",
     cmd_cashflows, true},
    {"type", "the conventions of one bond type",
     "kbond type TYPE",
     "The conventions of one bond type: name, coupons per year, accrued day count and the\n"
     "end-of-month rule. TYPE is a code, a catalogue name or a nickname.",
     cmd_type, false},
    {"types", "the bond type catalogue",
     "kbond types [--nicknames]",
     "The bond type catalogue: every base code with its conventions. With --nicknames,\n"
     "the everyday names that --type accepts (gilt, ust, acgb, ...) and their codes.",
     cmd_types, false},
    {"batch", "analytics for a portfolio in a CSV file",
     "kbond batch FILE.csv [-o OUT.csv] [--table | --json] [--decimal] [--jobs N]\n"
     "                   [--separator C]",
     "Analytics for a portfolio, one bond per CSV row (FILE '-' reads standard input).\n"
     "The header line is required; column names in any order:\n"
     "  id            free text echoed to the output (optional)\n"
     "  type          bond type code, name or nickname (optional, default 0)\n"
     "  coupon        annual coupon rate, percent (decimal with --decimal)\n"
     "  maturity      maturity date, ISO or serial\n"
     "  settlement    settlement date, ISO or serial\n"
     "  price         clean price per 100 (or 32nds: 98-01, 98-01+, 98-012), or\n"
     "  yield         yield, percent (decimal with --decimal); each row gives one of the two\n"
     "  frequency, dated, first_coupon, redemption   optional, as the bond flags\n"
     "Output CSV (standard output or -o FILE): id, type, price, yield_pct (yield with\n"
     "--decimal), accrued, modified_duration, convexity, pvbp, error_code, error.\n"
     "error_code is empty on success, the library's code when it refused the bond, or\n"
     "'input' for a malformed row; error is a sentence. Malformed rows are reported on\n"
     "standard error with their line number and do not stop the batch. --table prints an\n"
     "aligned table instead of CSV, --json one JSON object per row (JSON lines).\n"
     "A UTF-8 byte-order mark is skipped; fields are separated by ',' or, when the header\n"
     "has ';' and no ',', by ';' (numbers may then use a decimal comma); --separator C\n"
     "sets it (',', ';' or 'tab'). --jobs N values on N threads (default: every core);\n"
     "the output keeps the input's order. On a terminal, long runs show a progress bar on\n"
     "standard error. Exit code 1 when any row failed.",
     cmd_batch, false},
};

void print_main_help() {
  std::printf(
      "kbond - bond analytics with the k_bond library (%s)\n\n"
      "Usage: kbond COMMAND [FLAGS]\n\nCommands:\n",
      KVLbondver());
  for (const auto& c : kCommands) std::printf("  %-10s %s\n", c.name, c.brief);
  std::printf(
      "\nRun 'kbond COMMAND --help' for a command's flags.\n\n"
      "Example:\n"
      "  kbond price --type ust --coupon 4.25 --maturity 2034-11-15 --settlement 2025-01-15 "
      "--yield 4.5\n\n"
      "Exit codes: 0 success, 1 the library reported an error (shown as a sentence with its\n"
      "code) or a batch row failed, 2 a wrong command line.\n");
}

void print_command_help(const Command& c) {
  std::printf("Usage: %s\n\n%s\n", c.usage, c.summary);
  if (c.bond_flags) std::printf("\n%s", kBondFlags);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0 ||
      std::strcmp(argv[1], "help") == 0) {
    if (argc >= 3 && std::strcmp(argv[1], "help") == 0) {
      for (const auto& c : kCommands)
        if (std::strcmp(argv[2], c.name) == 0) {
          print_command_help(c);
          return kExitOk;
        }
    }
    print_main_help();
    return argc < 2 ? kExitUsage : kExitOk;
  }
  if (std::strcmp(argv[1], "--version") == 0) {
    std::printf("kbond %s\n", KVLbondver());
    return kExitOk;
  }
  for (const auto& c : kCommands) {
    if (std::strcmp(argv[1], c.name) != 0) continue;
    Options o;
    std::string why;
    if (!parse_options(argc, argv, 2, &o, &why)) {
      if (o.help) {
        print_command_help(c);
        return kExitOk;
      }
      return report_usage_error(c.name, why);
    }
    if (o.help) {
      print_command_help(c);
      return kExitOk;
    }
    return c.run(o);
  }
  std::fprintf(stderr, "kbond: unknown command '%s'. Run 'kbond --help' for the commands.\n",
               argv[1]);
  return kExitUsage;
}
