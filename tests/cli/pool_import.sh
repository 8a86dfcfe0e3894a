#!/bin/bash
# tavlo-cli pool import / show / export: a preset dump into the pool and back,
# with every answer to a name clash given by --on-clash.
source "$(dirname "$0")/lib/common.sh"
command -v sqlite3 >/dev/null || { echo "sqlite3 shell missing"; exit 77; }
POOL="$dir/Tavlo.mdb"
count() { sqlite3 "$POOL" "$1"; }

"$cli" pool init --pool "$POOL" >/dev/null || fail "pool init"
sqlite3 "$POOL" <<'SQL' || fail "seed rows"
INSERT INTO PresetRec (Name, CreatedDate, UpdatedDate, SetupChannelMap) VALUES ('Lead', '2020-01-02 03:04:05', '2020-01-02 03:04:05', zeroblob(64));
INSERT INTO FaderRec (PresetREF, "Index", Name, Function, CCNum, Channel) SELECT ID, 0, 'Cutoff', 1, 74, 2 FROM PresetRec WHERE Name = 'Lead';
INSERT INTO ButtonRec (PresetREF, "Index", Name, Function, ProgChange, Channel) SELECT ID, 0, 'Prog', 3, 9, 2 FROM PresetRec WHERE Name = 'Lead';
SQL
"$cli" pool export Lead -o "$dir/lead.syx" --pool "$POOL" >/dev/null || fail "export"

# A clash with nothing to answer it is an error and changes nothing.
before=$(count "SELECT COUNT(*) FROM PresetRec")
"$cli" pool import "$dir/lead.syx" --pool "$POOL" >/dev/null 2>"$dir/err" && fail "unanswered clash accepted"
grep -q "question not answered: Duplicate Preset Name: .*--on-clash .*--scene-refs " "$dir/err" || fail "message: $(cat "$dir/err")"
grep -q "Form" "$dir/err" && fail "a window's name in: $(cat "$dir/err")"
[ "$(count "SELECT COUNT(*) FROM PresetRec")" == "$before" ] || fail "unanswered clash changed the pool"

"$cli" pool import "$dir/lead.syx" --on-clash keep --pool "$POOL" | grep -qx "kept the pool's preset: Lead" || fail "keep"
"$cli" pool import "$dir/lead.syx" --on-clash rename-new:"Lead Copy" --pool "$POOL" | grep -qx "stored: Lead Copy" || fail "rename-new"
"$cli" pool import "$dir/lead.syx" --on-clash rename-pool:"Old Lead" --pool "$POOL" >/dev/null || fail "rename-pool"
[ "$(count "SELECT COUNT(*) FROM PresetRec WHERE Name IN ('Lead', 'Lead Copy', 'Old Lead')")" == 3 ] || fail "renames"
lead_id=$(count "SELECT ID FROM PresetRec WHERE Name = 'Lead'")
"$cli" pool import "$dir/lead.syx" --on-clash overwrite --pool "$POOL" >/dev/null || fail "overwrite"
[ "$(count "SELECT ID FROM PresetRec WHERE Name = 'Lead'")" == "$lead_id" ] || fail "overwrite changed the ID"
# A rename to a name the pool holds is refused by the dialogue; nothing changes.
"$cli" pool import "$dir/lead.syx" --on-clash rename-new:"old lead" --pool "$POOL" >/dev/null 2>"$dir/err" && fail "taken name accepted"
grep -q "Cannot Continue Store: That Preset Name already exists in the database.  Please choose another." "$dir/err" || fail "taken name message"
expect_statuses <<CASES
64|pool import "$dir/lead.syx" --on-clash sideways --pool "$POOL"
64|pool import "$dir/lead.syx" --on-clash keep --bogus --pool "$POOL"
2|pool import "$dir/lead.syx" --on-clash keep --pool "$dir/typo.mdb"
CASES
[ ! -e "$dir/typo.mdb" ] || fail "import made a pool at a mistyped path"

# The JSON of a stored preset carries what the dump carried.
"$cli" pool show "Lead Copy" --pool "$POOL" >"$dir/show.json" || fail "show"
grep -q '"Name": "Cutoff"' "$dir/show.json" || fail "fader name in JSON"
grep -q '"CCNum": 74' "$dir/show.json" || fail "CC number in JSON"
grep -q '"ProgChange": 9' "$dir/show.json" || fail "program change in JSON"
"$cli" pool show Nobody --pool "$POOL" >/dev/null 2>&1 && fail "show of a missing preset"

# A file that holds no preset is refused and leaves the pool alone.
printf 'not a dump' >"$dir/junk.syx"
before=$(count "SELECT COUNT(*) FROM FaderRec")
"$cli" pool import "$dir/junk.syx" --pool "$POOL" >/dev/null 2>"$dir/err" && fail "junk accepted"
grep -q "Cannot Import Preset Sysex" "$dir/err" || fail "junk message"
[ "$(count "SELECT COUNT(*) FROM FaderRec")" == "$before" ] || fail "junk changed the pool"
# Preset text: exported, imported into a fresh pool and exported again, the
# same text; references the fresh pool lacks need --missing-scenes.
P2="$dir/second.mdb"; P3="$dir/third.mdb"
"$cli" pool init --pool "$P2" >/dev/null && "$cli" pool init --pool "$P3" >/dev/null || fail "pool init"
sqlite3 "$POOL" <<'SQL' || fail "scene rows"
INSERT INTO SceneRec (PresetREF, Name) SELECT ID, 'Verse' FROM PresetRec WHERE Name = 'Lead';
UPDATE ButtonRec SET Function = 9, Scene = 'Verse', ScenePreset = (SELECT ID FROM PresetRec WHERE Name = 'Lead')
  WHERE PresetREF = (SELECT ID FROM PresetRec WHERE Name = 'Lead Copy') AND "Index" = 0;
SQL
"$cli" pool export Lead -o "$dir/lead.tpr" --pool "$POOL" >/dev/null || fail "export text"
"$cli" pool export "Lead Copy" -o "$dir/copy.tpr" --pool "$POOL" >/dev/null || fail "export text"
"$cli" pool import "$dir/lead.tpr" --pool "$P2" | grep -qx "stored: Lead" || fail "import text"
"$cli" pool export Lead -o "$dir/again.tpr" --pool "$P2" >/dev/null && cmp -s "$dir/lead.tpr" "$dir/again.tpr" ||
    fail "text changed on its way through a second pool"
"$cli" pool import "$dir/lead.tpr" --pool "$P2" >/dev/null 2>"$dir/err" && fail "unanswered clash accepted"
grep -q "About to Store: .*--on-clash keep|overwrite" "$dir/err" || fail "clash message: $(cat "$dir/err")"
"$cli" pool import "$dir/copy.tpr" --pool "$P3" >/dev/null 2>"$dir/err" && fail "unanswered missing scenes accepted"
grep -q "Resolve Scene Maps to Nonexistent Presets: " "$dir/err" && grep -q "Preset: Lead,   Scene: Verse on Button #1" "$dir/err" ||
    fail "missing scenes message: $(cat "$dir/err")"
[ "$(sqlite3 "$P3" "SELECT COUNT(*) FROM PresetRec")" == 1 ] || fail "a halted import stored something"
"$cli" pool import "$dir/copy.tpr" --missing-scenes unmap --pool "$P3" | grep -qx "stored: Lead Copy" || fail "unmap"
printf '[PRESET] Broken\r\n' >"$dir/broken.tpr"
"$cli" preset convert "$dir/lead.tpr" -o "$dir/conv.syx" >/dev/null && cmp -s "$dir/conv.syx" "$dir/lead.syx" ||
    fail "text converted to other bytes than the pool's export"
"$cli" preset convert "$dir/copy.tpr" -o "$dir/copy.syx" 2>&1 >/dev/null | grep -q "warning: Button 1 sends scene 'Verse' of 'Lead'" ||
    fail "no warning for a dropped reference"
expect_statuses <<CASES
2|pool import "$dir/copy.tpr" --missing-scenes refuse --pool "$P3"
2|pool import "$dir/broken.tpr" --pool "$P3"
2|preset convert "$dir/broken.tpr" -o "$dir/b.syx"
0|preset convert "$dir/lead.syx" -o "$dir/lead2.tpr"
64|preset convert "$dir/lead.tpr" -o "$dir/x.tpr"
64|pool import "$dir/lead.tpr" --on-clash rename-new:X --pool "$P2"
CASES
# Twenty imports at once: each waits its turn for the pool, and all succeed.
pids=()
for i in $(seq 1 20); do
    "$cli" pool import "$dir/lead.syx" --on-clash rename-new:"Par $i" --pool "$POOL" >"$dir/par$i" 2>&1 &
    pids+=($!)
done
for i in "${!pids[@]}"; do wait "${pids[$i]}" || fail "parallel import $((i + 1)): $(cat "$dir/par$((i + 1))")"; done
[ "$(count "SELECT COUNT(*) FROM PresetRec WHERE Name LIKE 'Par %'")" == 20 ] || fail "parallel imports lost presets"
"$cli" pool check --pool "$POOL" >/dev/null || fail "pool not sound afterwards"
echo ok
