#!/bin/sh
# Fuzzes the quotes database reader with libFuzzer (clang, AddressSanitizer and
# UndefinedBehaviorSanitizer) for SECONDS seconds (default 60). Not part of the normal
# build. The seed corpus is fuzz/corpus/quotes-reader; new inputs go to build-fuzz/corpus,
# crashes to build-fuzz/.
set -eu
seconds=${1:-60}
root=$(cd "$(dirname "$0")/.." && pwd)
out=${FUZZ_BUILD_DIR:-"$root/build-fuzz"}
mkdir -p "$out/corpus"
out=$(cd "$out" && pwd)
clang++ -std=c++20 -O1 -g -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined \
  -I"$root/src" \
  "$root/fuzz/QuotesReaderFuzzer.cpp" "$root/src/core/QuotesDocument.cpp" \
  "$root/src/core/PlainQuotesReader.cpp" \
  "$root/src/core/QuotesReaderCallbacks.cpp" "$root/src/core/QuoteRecord.cpp" \
  "$root/src/core/UUIDGenerator.cpp" -o "$out/quotes-reader-fuzzer"
cd "$out"
exec ./quotes-reader-fuzzer -max_total_time="$seconds" -max_len=65536 -timeout=10 \
  -artifact_prefix="$out/" corpus "$root/fuzz/corpus/quotes-reader"
