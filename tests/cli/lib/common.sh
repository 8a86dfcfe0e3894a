# Shared by the tavlo-cli test scripts: the program, a scratch folder that
# goes away at the end, and the one way to fail.
set -u
cli="$TAVLO_BUILD_DIR/tools/tavlo-cli"
[ -x "$cli" ] || { echo "tavlo-cli not built"; exit 77; }
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
fail() { echo "FAIL: $*"; exit 1; }
