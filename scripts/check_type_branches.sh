#!/usr/bin/env bash
# Every market convention keyed on a bond type code lives in the catalogue
# (src/engine/catalogue_table.cpp, catalogue.*) and its rule file
# (src/engine/market_rules.*). This check lists any other place in src/ that
# compares a bond type with a number or switches on one with numbered cases.
#
# Bond types go by the names type, base, base_type, bond_type and type_code
# (members too: d.type, desc->type, *a.type). Day-count codes (code, dc_c),
# futures contract codes and FRN settings use other names and are not
# flagged; src/frn is left out because an FRN "base" is a registry handle.
set -euo pipefail
cd "$(dirname "$0")/.."

names='(type|base|base_type|bond_type|type_code)'
compare="(^|[^A-Za-z0-9_])${names}[[:space:]]*(==|!=)[[:space:]]*-?[0-9]+([^0-9.]|\$)"
compare_reversed="[^A-Za-z0-9_.][0-9]+[[:space:]]*(==|!=)[[:space:]]*[*]?([A-Za-z_][A-Za-z0-9_]*(\\.|->))?${names}([^A-Za-z0-9_]|\$)"

files=$(find src -name '*.cpp' -o -name '*.h' | grep -v -E '^src/(engine/(catalogue|catalogue_table|market_rules)\.(h|cpp)|frn/)' | sort)

found=$(
  {
    grep -nE "${compare}|${compare_reversed}" $files || true
    # Numbered cases inside a switch on a bond type.
    awk -v names="$names" '
      FNR == 1 { depth = 0; inside = 0 }
      {
        line = $0
        if (!inside && line ~ ("switch[[:space:]]*\\(([^()]*[^A-Za-z0-9_(])?" names "\\)")) {
          inside = 1; start = depth
        }
        if (inside && line ~ /case[[:space:]]+-?[0-9]+[[:space:]]*:/) print FILENAME ":" FNR ":" line
        n = gsub(/{/, "{", line); m = gsub(/}/, "}", line)
        depth += n - m
        if (inside && depth <= start && m > 0) inside = 0
      }' $files
  } | sort -u
)

if [ -n "$found" ]; then
  echo "Bond type codes compared outside the catalogue and market_rules:" >&2
  echo "$found" >&2
  exit 1
fi
