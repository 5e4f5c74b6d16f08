#!/usr/bin/env bash
# Runs every shipped report over the sample catalogue to a PDF file with the headless
# program, reads each back as text with pdftotext, and checks what it prints against the
# catalogue itself (queried with sqlite3): each product's price, the counts and totals of
# each group and of the report, and as many pages as the lines need (45 body lines a page:
# the rows, a head and a total line per group, and the report's total line).
# Usage: shipped_reports.sh <catalogue-headless> <program folder>
set -uo pipefail
program=$1
folder=$2
catalogue=$folder/tandrel2004.mde
for tool in pdftotext pdfinfo sqlite3; do
    command -v $tool >/dev/null || { echo "FAIL $tool is missing (scripts/install-deps)"; exit 1; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
checks=0

fail() {
    echo "FAIL $1"
    failures=$((failures + 1))
}
# Fields come separated by "|": a tab would let read drop an empty first field.
sql() { sqlite3 -separator '|' "$catalogue" "$1"; }

# A number through the mask "$#,###.00": no leading zero, thousands separated.
money() {
    awk -v v="$1" 'BEGIN {
        s = sprintf("%.2f", v + 0); neg = s ~ /^-/; sub(/^-/, "", s)
        split(s, part, "."); whole = part[1]; out = ""
        while (length(whole) > 3) { out = "," substr(whole, length(whole) - 2) out; whole = substr(whole, 1, length(whole) - 3) }
        whole = whole out; if (whole == "0") whole = ""
        printf "%s$%s.%s\n", (neg ? "-" : ""), whole, part[2] }'
}

# run REPORT: the report's text, blanks squeezed, in $work/REPORT.txt; checks its pages.
run() {
    local report=$1 rows=$2 groups=$3
    if ! "$program" --report "$report.rpt" --pdf "$work/$report.pdf" "$catalogue" >/dev/null; then
        fail "$report: the headless program did not write the PDF"
        return 1
    fi
    pdftotext -layout "$work/$report.pdf" - | tr -s ' ' >"$work/$report.txt"
    local lines=$((rows + 2 * groups + 1))
    local want=$(((lines + 44) / 45))
    local pages
    pages=$(pdfinfo "$work/$report.pdf" | awk '/^Pages:/ {print $2}')
    checks=$((checks + 1))
    [ "$pages" = "$want" ] || fail "$report: $pages pages for $lines lines, expected $want"
}

# has REPORT TEXT: a line of the report reads TEXT (blanks squeezed) exactly.
has() {
    checks=$((checks + 1))
    grep -qxF -- "$2" <(sed 's/^ //; s/ $//' "$work/$1.txt") || fail "$1: no line \"$2\""
}

# row REPORT KEY VALUE...: a line holding the word KEY ends in the VALUEs.
row() {
    local report=$1 key=$2
    shift 2
    checks=$((checks + 1))
    awk -v key="$key" -v tail="$*" '
        { sub(/^ /, ""); keyed = 0; for (i = 1; i <= NF; i++) if ($i == key) keyed = 1 }
        keyed {
            n = split(tail, want, " "); ok = 1
            for (i = 1; i <= n; i++) if ($(NF - n + i) != want[i]) ok = 0
            if (ok) found = 1 }
        END { exit !found }' "$work/$report.txt" || fail "$report: no row $key ending in $*"
}

# Counts per group: "Total for GROUP Items: N", and the report's.
group_counts() {
    local report=$1 where=$2 column=$3 caption=$4
    while IFS='|' read -r group count; do
        has "$report" "Total for ${group:-(none)} $caption $count"
    done < <(sql "SELECT coalesce($column, ''), count(*) FROM Products WHERE $where GROUP BY coalesce($column, '')")
    has "$report" "Report total $caption $(sql "SELECT count(*) FROM Products WHERE $where")"
}

price_list() {
    local report=$1 column=$2 sold="(Disco = 0 OR Disco IS NULL)"
    run "$report" "$(sql "SELECT count(*) FROM Products WHERE $sold")" \
        "$(sql "SELECT count(DISTINCT coalesce(Category, '')) FROM Products WHERE $sold")" || return
    while IFS='|' read -r stock price; do
        row "$report" "$stock" "$(money "$price")"
    done < <(sql "SELECT StockNo, $column FROM Products WHERE $sold")
    # Discontinued items are left out.
    while read -r stock; do
        checks=$((checks + 1))
        ! awk '{ sub(/^ /, "") } $1 == k { f = 1 } END { exit !f }' k="$stock" "$work/$report.txt" ||
            fail "$report: the discontinued $stock is listed"
    done < <(sql "SELECT StockNo FROM Products WHERE NOT $sold")
    group_counts "$report" "$sold" Category "Items:"
}

for n in 1 2 3 4 5; do price_list "cost$n" "Cost$n"; done
price_list retail Retail

# Category: every product with its retail price, counted per category.
run Category "$(sql "SELECT count(*) FROM Products")" \
    "$(sql "SELECT count(DISTINCT coalesce(Category, '')) FROM Products")" && {
    while IFS='|' read -r stock retail; do row Category "$stock" "$(money "$retail")"; done \
        < <(sql "SELECT StockNo, Retail FROM Products")
    group_counts Category "1" Category "Items:"
}

# Inventory: quantity, unit cost and value of each line in hand; the totals.
held="[Number] <> 0"
run inventory "$(sql "SELECT count(*) FROM Inventory WHERE $held")" 0 && {
    while IFS='|' read -r stock number cost value; do
        row inventory "$stock" "$number" "$(money "$cost")" "$(money "$value")"
    done < <(sql "SELECT [Product Id], [Number], Cost, [Number] * Cost FROM Inventory WHERE $held")
    IFS='|' read -r lines quantity value < <(sql "SELECT count(*), sum([Number]), sum([Number] * Cost) FROM Inventory WHERE $held")
    has inventory "Report total Lines: $lines $quantity $(money "$value")"
}

# Orders: the lines not received, totalled per supplier of the product.
open_lines="FROM Orders o LEFT JOIN Products p ON lower(p.StockNo) = lower(o.ProductOrderID) WHERE o.[Date Received] IS NULL"
run orders "$(sql "SELECT count(*) $open_lines")" "$(sql "SELECT count(DISTINCT coalesce(p.Supplier, '')) $open_lines")" && {
    while IFS='|' read -r stock qty each cost; do
        row orders "$stock" "$qty" "$(money "$each")" "$(money "$cost")"
    done < <(sql "SELECT o.ProductOrderID, o.NumberOrdered, o.WtPrice, o.Cost $open_lines")
    while IFS='|' read -r supplier lines qty cost; do
        has orders "Total for ${supplier:-(none)} Lines: $lines $qty $(money "$cost")"
    done < <(sql "SELECT coalesce(p.Supplier, ''), count(*), sum(o.NumberOrdered), sum(o.Cost) $open_lines GROUP BY coalesce(p.Supplier, '')")
    IFS='|' read -r lines qty cost < <(sql "SELECT count(*), sum(o.NumberOrdered), sum(o.Cost) $open_lines")
    has orders "Report total Lines: $lines $qty $(money "$cost")"
}

# Page: the products of each catalogue page.
run page "$(sql "SELECT count(*) FROM Products")" \
    "$(sql "SELECT count(DISTINCT coalesce(PageNo, '')) FROM Products")" && {
    while IFS='|' read -r stock retail; do row page "$stock" "$(money "$retail")"; done \
        < <(sql "SELECT StockNo, Retail FROM Products")
    group_counts page "1" PageNo "Items:"
}

# All: every product with cost 1, retail and stock count.
run all "$(sql "SELECT count(*) FROM Products")" 0 && {
    while IFS='|' read -r stock cost retail count; do
        row all "$stock" "$(money "$cost")" "$(money "$retail")" "$count"
    done < <(sql "SELECT StockNo, Cost1, Retail, Inventory FROM Products")
    has all "Report total Items: $(sql "SELECT count(*) FROM Products")"
}

# Report files that cannot run end the run with status 2 and one line naming the fault.
refused() {
    local what=$1 text=$2 number=$3
    printf '%b' "$text" >"$work/bad.rpt"
    checks=$((checks + 1))
    timeout 60 "$program" --report "$work/bad.rpt" --pdf "$work/bad.pdf" "$catalogue" \
        >/dev/null 2>"$work/err"
    local status=$?
    if [ $status -ne 2 ] || [ "$(wc -l <"$work/err")" -ne 1 ] ||
        ! grep -qF "(error $number)" "$work/err" || [ -e "$work/bad.pdf" ]; then
        fail "$what: status $status, $(cat "$work/err")"
    fi
    rm -f "$work/bad.rpt"
}
refused "an empty report file" "" 5
refused "an unknown column" 'table Products\ncolumn Colour "Colour" 10\n' 3265
refused "an unknown table" 'table Customers\ncolumn Name "Name" 10\n' 3078
refused "a broken selection" 'table Products\nwhere "StockNo = \x27A"\ncolumn StockNo "S" 5\n' 3001
checks=$((checks + 1))
timeout 60 "$program" --report "$work/none.rpt" --pdf "$work/bad.pdf" "$catalogue" 2>"$work/err"
[ $? -eq 2 ] && grep -qF "(error 53)" "$work/err" || fail "a missing report file: $(cat "$work/err")"

echo "$checks checks, $failures failed"
[ "$failures" -eq 0 ]
