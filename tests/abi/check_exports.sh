#!/usr/bin/env bash
# The shared library must export exactly the KVL... functions the public
# header declares: nothing more (internals stay hidden), nothing less.
set -euo pipefail
lib=$1
header=$2
exported=$(nm -D --defined-only "$lib" | awk '$2 ~ /^[TW]$/ {print $3}' | sort -u || true)
# Declarations read: KVL_EXPORT <type> KVL_API KVLname(
declared=$(grep -oE 'KVL_API[[:space:]]+KVL[A-Za-z0-9_]+' "$header" | awk '{print $2}' | sort -u || true)
status=0
stray=$(comm -23 <(echo "$exported") <(echo "$declared") | sed '/^$/d' || true)
missing=$(comm -13 <(echo "$exported") <(echo "$declared") | sed '/^$/d' || true)
if [ -n "$stray" ]; then echo "exported but not declared in the header:"; echo "$stray"; status=1; fi
if [ -n "$missing" ]; then echo "declared in the header but not exported:"; echo "$missing"; status=1; fi
[ $status -eq 0 ] && echo "$(echo "$exported" | sed '/^$/d' | wc -l) exported functions match the header"
exit $status
