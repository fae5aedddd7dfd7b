#!/bin/sh
# Logs on real days: log_days.sh COMMAND... where COMMAND is the test program under Wine. The clock
# is shifted by faketime; Wine's server must run already (it keeps its own time).
set -eu

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail() {
    echo "$1"
    ls -l "$folder"
    for file in "$folder"/*; do echo "== $file"; head -c 1000 "$file"; done
    exit 1
}

at() { # at DAY-AND-TIME COMMAND...: the clock starts there
    time=$1
    shift
    faketime -f "@$time" "$@"
}

expect_files() {
    [ "$(ls | tr '\n' ' ')" = "$1 " ] || fail "expected the files $1"
}

# expect_lines FILE PATTERN...: the lines, of which entries repeat; CR LF at each end
expect_lines() {
    file=$1
    shift
    pattern=$(printf '%s\n' "$@")
    [ "$(sed 's/\r$//; s/, [0-9:]\{8\}: /|/' "$file" | uniq)" = "$pattern" ] ||
        fail "$file is not: $pattern"
    [ "$(grep -c "$(printf '\r$')" "$file")" = "$(wc -l <"$file")" ] || fail 'a line end is not CR LF'
}

# Across midnight, on two files; the leap day is a day.
at '2024-02-28 23:59:56' "$@" --child logAcrossMidnight a.log b.log
expect_files 'a.log a_2024.02.28.log b.log b_2024.02.28.log'
for name in a b; do
    expect_lines ${name}_2024.02.28.log '2024.02.28|entry' \
        '2024.02.29|Date changed from 2/28/2024 to 2/29/2024.'
    expect_lines $name.log \
        "2024.02.29|Moving log file from $name.log to ${name}_2024.02.28.log." '2024.02.29|entry'
done
rm b*

# A restart on the same day goes on in the file; then a year's last day passes.
at '2024-02-29 12:00:00' "$@" --child logAcrossMidnight no_such_folder\\a.log && fail 'opened'
at '2024-12-31 23:59:56' "$@" --child logAcrossMidnight a.log
# The gap moved the file at opening, so the leap day has its backup, too; two of the three are kept.
expect_files 'a.log a_2024.02.29.log a_2024.12.31.log'
expect_lines a_2024.02.29.log '2024.02.29|Moving log file from a.log to a_2024.02.28.log.' \
    '2024.02.29|entry'
expect_lines a_2024.12.31.log '2024.12.31|Moving log file from a.log to a_2024.02.29.log.' \
    '2024.12.31|entry' '2025.01.01|Date changed from 12/31/2024 to 1/1/2025.'

# The clock set back behind the file's day, and forward by a year.
at '2024-06-01 23:59:56' "$@" --child logAcrossMidnight a.log
expect_files 'a.log a_2024.12.31.log a_2025.01.01.log'
at '2026-06-01 23:59:56' "$@" --child logAcrossMidnight a.log
expect_files 'a.log a_2025.01.01.log a_2026.06.01.log'
rm a*

# Across both changes to daylight-saving time and back the day changes once.
for day in 2024-03-30 2024-10-26; do
    TZ=Europe/Berlin at "$day 23:59:56" "$@" --child logAcrossMidnight a.log
    expect_files "a.log a_$(echo $day | tr - .).log"
    rm a*
done

# Another handle on the file: the rename fails, the old day is lost, the new one is written.
at '2024-02-28 23:59:56' "$@" --child logHeldAcrossMidnight a.log
expect_files 'a.log'
expect_lines a.log \
    '2024.02.29|Moving log file from a.log to a_2024.02.28.log. FAILED (EC: 32)!' '2024.02.29|entry'
rm a*

# Disk full in the middle of an entry: later ones are written as soon as there is room.
(
    trap '' XFSZ  # a failing write instead of the end of the program
    ulimit -f 16  # of 512 bytes; others in Wine may fail as well, and say so
    [ "$("$@" --child fillDisk a.log 2>/dev/null | tr -d '\r')" = 0 ] || fail 'errors stay in the result'
)
expect_lines a.log "$(date '+%Y.%m.%d')|entry"
rm a*

# Disk full for the notices: the day changes all the same.
(
    trap '' XFSZ
    ulimit -f 1
    yes 'x' | head -c 510 >a.log
    at '2024-02-28 23:59:56' "$@" --child logAcrossMidnight a.log 2>/dev/null
)
expect_files 'a.log'

# A folder that takes no new names: the rename fails, the file itself can be written.
if [ "$(id -u)" != 0 ]; then
    echo '2024.02.28, 1' >a.log
    chmod a-w .
    at '2024-02-29 23:59:56' "$@" --child logAcrossMidnight a.log || true
    chmod u+w .
    grep -q 'FAILED (EC: 5)!' a.log || fail 'a read-only folder'
fi
