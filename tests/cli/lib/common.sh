# Shared by the tavlo-cli test scripts: the program, a scratch folder that
# goes away at the end, and the one way to fail.
set -u
cli="$TAVLO_BUILD_DIR/tools/tavlo-cli"
[ -x "$cli" ] || { echo "tavlo-cli not built"; exit 77; }
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*"; exit 1; }
# Reads "STATUS|ARGUMENTS" lines (ARGUMENTS split as the shell would) and runs
# tavlo-cli on each: the exit status must be STATUS, and a command line
# refused as unreadable (64) says so in one line on stderr.
expect_statuses() {
    local want words got
    while IFS='|' read -r want words; do
        [[ -z "$want" || "$want" == \#* ]] && continue
        eval "set -- $words"
        "$cli" "$@" >/dev/null 2>"$dir/stderr"
        got=$?
        [[ $got == "$want" ]] || fail "status $got, not $want: $words: $(cat "$dir/stderr")"
        [[ $want != 64 || $(wc -l <"$dir/stderr") == 1 ]] || fail "not one line on stderr: $words: $(cat "$dir/stderr")"
    done
}
