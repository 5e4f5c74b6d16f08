#!/usr/bin/env bash
# The headless program on files it cannot take as its catalogue: each run ends with a
# status of 2 (not a crash) and one line on the error stream naming the file.
# Usage: foreign_catalogues.sh <catalogue-headless> <a good catalogue>
set -uo pipefail
program=$1
good=$2
work=$(mktemp -d)
trap 'kill $holder 2>/dev/null; rm -rf "$work"' EXIT
holder=0
failures=0

expect_refused() {
    local what=$1 file=$2
    "$program" "$file" >"$work/out" 2>"$work/err"
    local status=$?
    local lines
    lines=$(wc -l <"$work/err")
    if [ "$status" -ne 2 ] || [ "$lines" -ne 1 ] || ! grep -qF "$file" "$work/err"; then
        echo "FAIL $what: status $status, $lines error lines:"
        cat "$work/err"
        failures=$((failures + 1))
    else
        echo "ok   $what: $(cat "$work/err")"
    fi
}

: >"$work/empty.mde"
expect_refused "an empty file" "$work/empty.mde"
echo "Dear customer, this is a letter." >"$work/letter.mde"
expect_refused "a text file" "$work/letter.mde"
printf '\x89PNG\r\n\x1a\n\0\0\0\rIHDR' >"$work/picture.mde"
head -c 300 /dev/zero >>"$work/picture.mde"
expect_refused "a picture" "$work/picture.mde"
head -c 2048 "$good" >"$work/truncated.mde"
expect_refused "a truncated catalogue" "$work/truncated.mde"
sqlite3 "$work/other.mde" "CREATE TABLE Customers (Name TEXT); INSERT INTO Customers VALUES ('Ann');"
expect_refused "a database of another shape" "$work/other.mde"
sqlite3 "$work/narrow.mde" "CREATE TABLE Products (StockNo TEXT, ProdName TEXT);"
expect_refused "a Products table without the catalogue's columns" "$work/narrow.mde"
mkdir "$work/folder.mde"
expect_refused "a folder" "$work/folder.mde"
expect_refused "a missing file" "$work/missing.mde"

# Another program holds the catalogue locked for the length of the run.
cp "$good" "$work/locked.mde"
sqlite3 "$work/locked.mde" "PRAGMA journal_mode=DELETE" >/dev/null
mkfifo "$work/hold"
sqlite3 "$work/locked.mde" <"$work/hold" >/dev/null &
holder=$!
exec 3>"$work/hold"
echo "BEGIN EXCLUSIVE; UPDATE Products SET Notes = 'theirs';" >&3
for _ in $(seq 100); do
    sqlite3 "$work/locked.mde" "SELECT count(*) FROM Products" >/dev/null 2>&1 || break
    sleep 0.1
done
expect_refused "a catalogue locked by another program" "$work/locked.mde"
echo "COMMIT;" >&3
exec 3>&-
wait $holder

[ "$failures" -eq 0 ]
