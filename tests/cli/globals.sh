#!/bin/bash
# tavlo-cli globals and midi get-globals / send-globals: files both ways on
# both models, the pool's commands with their refusals and questions, and the
# virtual PC1600 inside tavlo-cli.
source "$(dirname "$0")/lib/common.sh"
command -v sqlite3 >/dev/null || { echo "sqlite3 shell missing"; exit 77; }
POOL="$dir/Tavlo.mdb"
v="Tavlo Virtual PC1600"
bytes() { od -An -tx1 -v "$1" | tr -d ' \n'; }

# JSON -> dump -> .tgl -> dump is byte-identical on both models.
cat >"$dir/in.json" <<'JSON'
{"Name": "Stage", "ChIn": 3, "DevNum": 10, "FootSwitch1": 20, "RemoteButton": 1, "PerByte": 4,
 "Filters": [true, false, false, false, false, false, false, false, false, false, false, false, false, false, true]}
JSON
for model in pc1600 pc1600x; do
    "$cli" globals build "$dir/in.json" -o "$dir/$model.syx" --model $model --device-id 2 >/dev/null || fail "build $model"
    "$cli" globals convert "$dir/$model.syx" -o "$dir/$model.tgl" --model $model --name Stage >/dev/null || fail "to tgl $model"
    "$cli" globals convert "$dir/$model.tgl" -o "$dir/$model-back.syx" --model $model --device-id 2 >/dev/null || fail "to syx $model"
    [[ $(bytes "$dir/$model.syx") == $(bytes "$dir/$model-back.syx") ]] || fail "$model round trip differs"
done
[[ $(stat -c %s "$dir/pc1600.syx") == 418 && $(stat -c %s "$dir/pc1600x.syx") == 420 ]] || fail "dump lengths"
show=$("$cli" globals show "$dir/pc1600x.tgl" --json) || fail "show json"
for want in '"Name": "Stage"' '"ChIn": 3' '"FootSwitch1": 20' '"PerByte": 4' '"StartingNote": 60'; do
    grep -qF "$want" <<<"$show" || fail "json lacks $want"
done
"$cli" globals show "$dir/pc1600x.syx" | grep -qx "Device number: 10 (0Ah)" || fail "device number text"
grep -q $'^\\[FOOTSW1\\] Value 20\r$' "$dir/pc1600x.tgl" || fail "foot switch past the list"

# Bad input: exit 2, no file written.
head -c 418 "$dir/pc1600x.syx" >"$dir/short.syx"; printf '\xf7' >>"$dir/short.syx"
sed 's/^\[CHOUT\]/[CHANOUT]/' "$dir/pc1600x.tgl" >"$dir/badkey.tgl"
sed 's/^005      -> P05/005 P05/' "$dir/pc1600x.tgl" >"$dir/badmap.tgl"
echo '{"ChIn": 200}' >"$dir/range.json"
echo '{"Chin": 2}' >"$dir/typo.json"
expect_statuses <<CASES
2|globals show "$dir/short.syx"
2|globals show "$dir/badkey.tgl"
2|globals convert "$dir/badmap.tgl" -o "$dir/x.syx"
2|globals build "$dir/range.json" -o "$dir/x.syx"
2|globals build "$dir/typo.json" -o "$dir/x.tgl"
64|globals show "$dir/pc1600.syx" --model pc1700
64|globals convert "$dir/pc1600.syx" -o "$dir/x.tgl" --device-id 16
CASES
[[ ! -e "$dir/x.syx" && ! -e "$dir/x.tgl" ]] || fail "a refused command wrote a file"

# The pool: import, list, the questions no option answered change nothing.
"$cli" pool init --pool "$POOL" >/dev/null || fail "pool init"
"$cli" globals import "$dir/pc1600x.syx" --name Live --default --pool "$POOL" >/dev/null || fail "import"
sed 's/^\[DEFAULT\] No/[DEFAULT] Yes/' "$dir/pc1600x.tgl" >"$dir/default.tgl"
expect_statuses <<CASES
64|globals import "$dir/default.tgl" --pool "$POOL"
64|globals import "$dir/pc1600x.syx" --name live --pool "$POOL"
2|globals delete Live --pool "$POOL"
2|globals delete Live --yes --pool "$POOL"
2|globals export Nobody -o "$dir/x.tgl" --pool "$POOL"
64|globals import "$dir/default.tgl" --default --no-default --pool "$POOL"
CASES
"$cli" globals import "$dir/default.tgl" --no-default --pool "$POOL" >/dev/null || fail "import answered No"
"$cli" globals duplicate Stage Copy --pool "$POOL" >/dev/null || fail "duplicate"
"$cli" globals duplicate Stage copy --pool "$POOL" 2>"$dir/err" && fail "duplicate clash"
grep -q "Cannot Duplicate Globals: There is already a Global Settings by that name." "$dir/err" || fail "clash: $(cat "$dir/err")"
"$cli" globals rename Copy Spare --pool "$POOL" >/dev/null || fail "rename"
"$cli" globals default Spare --pool "$POOL" >/dev/null || fail "default"
[[ "$("$cli" globals list --pool "$POOL")" == "Live  (IN=03, OUT=01)
Spare  (IN=03, OUT=01) [DEFAULT]
Stage  (IN=03, OUT=01)" ]] || fail "list: $("$cli" globals list --pool "$POOL")"
expect_statuses <<CASES
2|globals rename Spare stage --pool "$POOL"
2|globals duplicate Nobody Other --pool "$POOL"
CASES
sqlite3 "$POOL" "UPDATE MemoryImageRec SET GlobalSettings = (SELECT ID FROM GlobalRec WHERE Name = 'Live')"
"$cli" globals delete Live --yes --pool "$POOL" >/dev/null || fail "delete"
[[ $(sqlite3 "$POOL" "SELECT COUNT(*) FROM MemoryImageRec m, GlobalRec g WHERE m.GlobalSettings = g.ID AND g.Name = 'Spare'") -gt 0 ]] \
    || fail "images did not move to the default"
"$cli" globals export Spare -o "$dir/spare.tgl" --pool "$POOL" >/dev/null || fail "export"
grep -q $'^\\[DEFAULT\\] Yes\r$' "$dir/spare.tgl" || fail "export lost the default mark"

# The virtual PC1600: get, send back, get again; the original model refused nothing.
"$cli" midi get-globals --in "$v" --out "$v" -o "$dir/got.syx" >/dev/null 2>&1 || fail "get-globals"
[[ $(stat -c %s "$dir/got.syx") == 420 ]] || fail "got $(stat -c %s "$dir/got.syx") bytes"
"$cli" midi get-globals --in "$v" --out "$v" -o "$dir/got.tgl" >/dev/null 2>&1 || fail "get-globals to tgl"
grep -q $'^\\[GLOBAL DATA\\] Received from PC1600(x)\r$' "$dir/got.tgl" || fail "received name"
"$cli" midi send-globals "$dir/pc1600x.tgl" --out "$v" >/dev/null 2>&1 || fail "send-globals"
expect_statuses <<CASES
3|midi get-globals --in "$v" --out "$v" --device-id 4 --timeout 0.2 -o "$dir/x.syx"
2|midi send-globals "$dir/badkey.tgl" --out "$v"
64|midi get-globals --in "$v" --out "$v"
CASES
echo "globals: all passed"
