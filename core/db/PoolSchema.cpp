#include "db/PoolSchema.h"

#include "db/Database.h"
#include <strings.h>

#include <algorithm>


namespace tavlo {
namespace {

// Names compare without regard to case (COLLATE NOCASE): names that differ
// only in case are one name. Bool columns hold -1 for yes and 0 for no.
constexpr std::string_view kSchema = R"SQL(
CREATE TABLE PresetRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  Name TEXT NOT NULL COLLATE NOCASE UNIQUE,
  Notes TEXT NOT NULL DEFAULT '',
  CreatedDate TEXT NOT NULL,
  UpdatedDate TEXT NOT NULL,
  DataWheelLink INTEGER NOT NULL DEFAULT 0,
  SetupScene TEXT NOT NULL DEFAULT '<none>',
  SetupScenePreset INTEGER NOT NULL DEFAULT -1,
  SetupString TEXT NOT NULL DEFAULT '',
  SetupChannelMap BLOB NOT NULL
);
CREATE TABLE FaderRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  PresetREF INTEGER NOT NULL,
  "Index" INTEGER NOT NULL,
  Name TEXT NOT NULL DEFAULT '',
  Value INTEGER NOT NULL DEFAULT 0,
  Function INTEGER NOT NULL DEFAULT 0,
  Min INTEGER NOT NULL DEFAULT 0,
  Max INTEGER NOT NULL DEFAULT 127,
  Channel INTEGER NOT NULL DEFAULT 16,
  CCNum INTEGER NOT NULL DEFAULT 0,
  Polarity INTEGER NOT NULL DEFAULT -1,
  ReplaceMode INTEGER NOT NULL DEFAULT 0,
  MIDIString TEXT NOT NULL DEFAULT '',
  ParamFormat INTEGER NOT NULL DEFAULT 0,
  MasterOf TEXT NOT NULL DEFAULT '                  ',
  DeviceMapString TEXT NOT NULL DEFAULT ''
);
CREATE INDEX FaderRecPreset ON FaderRec(PresetREF, "Index");
CREATE TABLE ButtonRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  PresetREF INTEGER NOT NULL,
  "Index" INTEGER NOT NULL,
  Name TEXT NOT NULL DEFAULT '',
  Function INTEGER NOT NULL DEFAULT 0,
  Channel INTEGER NOT NULL DEFAULT 16,
  Note INTEGER NOT NULL DEFAULT 60,
  Velocity INTEGER NOT NULL DEFAULT 127,
  ProgChange INTEGER NOT NULL DEFAULT 0,
  Scene TEXT NOT NULL DEFAULT '<none>',
  ScenePreset INTEGER NOT NULL DEFAULT -1,
  String1 TEXT NOT NULL DEFAULT '',
  String2 TEXT NOT NULL DEFAULT '',
  DeviceMapString TEXT NOT NULL DEFAULT ''
);
CREATE INDEX ButtonRecPreset ON ButtonRec(PresetREF, "Index");
CREATE INDEX ButtonRecScenePreset ON ButtonRec(ScenePreset);
CREATE TABLE SceneRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  PresetREF INTEGER NOT NULL,
  Name TEXT NOT NULL COLLATE NOCASE,
  Fader1 INTEGER NOT NULL DEFAULT 0, Fader2 INTEGER NOT NULL DEFAULT 0,
  Fader3 INTEGER NOT NULL DEFAULT 0, Fader4 INTEGER NOT NULL DEFAULT 0,
  Fader5 INTEGER NOT NULL DEFAULT 0, Fader6 INTEGER NOT NULL DEFAULT 0,
  Fader7 INTEGER NOT NULL DEFAULT 0, Fader8 INTEGER NOT NULL DEFAULT 0,
  Fader9 INTEGER NOT NULL DEFAULT 0, Fader10 INTEGER NOT NULL DEFAULT 0,
  Fader11 INTEGER NOT NULL DEFAULT 0, Fader12 INTEGER NOT NULL DEFAULT 0,
  Fader13 INTEGER NOT NULL DEFAULT 0, Fader14 INTEGER NOT NULL DEFAULT 0,
  Fader15 INTEGER NOT NULL DEFAULT 0, Fader16 INTEGER NOT NULL DEFAULT 0,
  CV1 INTEGER NOT NULL DEFAULT 0, CV2 INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX SceneRecPreset ON SceneRec(PresetREF, Name);
CREATE TABLE MessageStringRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  MapType TEXT NOT NULL,
  MapREF INTEGER NOT NULL DEFAULT 0,
  "Index" INTEGER NOT NULL,
  WhichString INTEGER NOT NULL DEFAULT 0,
  CommandType INTEGER NOT NULL DEFAULT -1,
  CommandChannel INTEGER NOT NULL DEFAULT 16,
  ListItem TEXT NOT NULL DEFAULT '',
  EnteredString TEXT NOT NULL DEFAULT '',
  OwnCheck INTEGER NOT NULL DEFAULT 1,
  SysexMake TEXT NOT NULL DEFAULT '',
  SysexModel TEXT NOT NULL DEFAULT '',
  Value1 INTEGER NOT NULL DEFAULT 0,
  Value2 INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX MessageStringRecOwner ON MessageStringRec(MapType, MapREF, WhichString, "Index");
CREATE TABLE MakeModelAssocRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  PresetREF INTEGER NOT NULL,
  Make TEXT NOT NULL COLLATE NOCASE,
  Model TEXT NOT NULL COLLATE NOCASE
);
CREATE INDEX MakeModelAssocRecPreset ON MakeModelAssocRec(PresetREF);
CREATE TABLE MakeTable (
  Make TEXT NOT NULL COLLATE NOCASE PRIMARY KEY
);
CREATE TABLE ModelTable (
  Make TEXT NOT NULL COLLATE NOCASE,
  Model TEXT NOT NULL COLLATE NOCASE,
  SysexPrefix TEXT NOT NULL DEFAULT '',
  Description TEXT NOT NULL DEFAULT '',
  Own INTEGER NOT NULL DEFAULT 0,
  CannotDelete INTEGER NOT NULL DEFAULT 0,
  PRIMARY KEY (Make, Model)
);
CREATE TABLE DeviceFunctionTable (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  Make TEXT NOT NULL COLLATE NOCASE,
  Model TEXT NOT NULL COLLATE NOCASE,
  FunctionName TEXT NOT NULL COLLATE NOCASE,
  FunctionNotes TEXT NOT NULL DEFAULT '',
  Fader INTEGER NOT NULL DEFAULT 0,
  Name TEXT NOT NULL DEFAULT '',
  Function INTEGER NOT NULL DEFAULT 0,
  Value INTEGER NOT NULL DEFAULT 0,
  Min INTEGER NOT NULL DEFAULT 0,
  Max INTEGER NOT NULL DEFAULT 127,
  Channel INTEGER NOT NULL DEFAULT 0,
  CCNum INTEGER NOT NULL DEFAULT 0,
  ReplaceMode INTEGER NOT NULL DEFAULT 0,
  ParamFormat INTEGER NOT NULL DEFAULT 0,
  Note INTEGER NOT NULL DEFAULT 60,
  Velocity INTEGER NOT NULL DEFAULT 127,
  ProgChange INTEGER NOT NULL DEFAULT 0,
  Polarity INTEGER NOT NULL DEFAULT -1,
  MasterOf TEXT NOT NULL DEFAULT '                  ',
  String1 TEXT NOT NULL DEFAULT '',
  String2 TEXT NOT NULL DEFAULT '',
  Scene TEXT NOT NULL DEFAULT '<none>',
  ScenePreset INTEGER NOT NULL DEFAULT -1,
  UNIQUE (Make, Model, FunctionName)
);
CREATE TABLE GlobalRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  Name TEXT NOT NULL COLLATE NOCASE UNIQUE,
  CreatedDate TEXT NOT NULL,
  GlobalData BLOB NOT NULL,
  ChIn INTEGER NOT NULL DEFAULT 0,
  ChOut INTEGER NOT NULL DEFAULT 0,
  DeviceID INTEGER NOT NULL DEFAULT 0,
  "Default" INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE MemoryImageRec (
  ID INTEGER PRIMARY KEY AUTOINCREMENT,
  ImageName TEXT NOT NULL COLLATE NOCASE UNIQUE,
  ImageNotes TEXT NOT NULL DEFAULT '',
  CreatedDate TEXT NOT NULL,
  EditedDate TEXT NOT NULL,
  GlobalSettings INTEGER NOT NULL DEFAULT -1
);
CREATE TABLE MemoryImage2PresetMapRec (
  MemoryImageREF INTEGER NOT NULL,
  PresetREF INTEGER NOT NULL,
  "Index" INTEGER NOT NULL
);
CREATE INDEX MemoryImage2PresetMapRecImage ON MemoryImage2PresetMapRec(MemoryImageREF, "Index");
CREATE INDEX MemoryImage2PresetMapRecPreset ON MemoryImage2PresetMapRec(PresetREF);
CREATE TABLE DefaultsTable (
  Field TEXT NOT NULL PRIMARY KEY,
  Value TEXT NOT NULL DEFAULT ''
);
CREATE TABLE CCTable (
  CCNum INTEGER NOT NULL PRIMARY KEY,
  CCName TEXT NOT NULL
);
CREATE TABLE MIDIConfigTable (
  MIDIInDevice TEXT NOT NULL DEFAULT '__NONE__',
  MIDIOutDevice TEXT NOT NULL DEFAULT '__NONE__',
  MIDILearnInDevice TEXT NOT NULL DEFAULT '__NONE__',
  MIDISimOutDevice TEXT NOT NULL DEFAULT '__NONE__',
  MIDIInChannel INTEGER NOT NULL DEFAULT 0,
  LearnTolerance INTEGER NOT NULL DEFAULT 0,
  PC1600Model INTEGER NOT NULL DEFAULT 0,
  FreeMemory INTEGER NOT NULL DEFAULT 20904,
  Printer TEXT NOT NULL DEFAULT ''
);
CREATE TABLE WindowStates (
  Window TEXT NOT NULL,
  Left INTEGER NOT NULL DEFAULT 0,
  Top INTEGER NOT NULL DEFAULT 0,
  WindowState INTEGER NOT NULL DEFAULT 0,
  Visible INTEGER NOT NULL DEFAULT 0,
  LoadedID INTEGER NOT NULL DEFAULT -1,
  LoadedName TEXT NOT NULL DEFAULT ''
);
CREATE TABLE InitializedSysexTable (
  ALLPRESETSSysex BLOB NOT NULL,
  ALLSCENESSysex BLOB NOT NULL
);
)SQL";

}  // namespace

const std::vector<SchemaStep>& PoolMigrations() {
    // Version 1 is the first schema; later versions add their steps here.
    static const std::vector<SchemaStep> steps;
    return steps;
}

void CreatePoolSchema(Database& db) { db.exec(kSchema); }

const std::vector<PoolTable>& RequiredPoolTables() {
    static const std::vector<PoolTable> tables = [] {
        Database schema;
        schema.open(":memory:", Database::Mode::ReadWriteCreate);
        CreatePoolSchema(schema);
        std::vector<PoolTable> result;
        Statement names = schema.prepare(
            "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY rowid");
        while (names.step()) result.push_back({names.getText(0), {}});
        for (PoolTable& table : result) {
            Statement columns = schema.prepare("SELECT name FROM pragma_table_info(:Table) ORDER BY cid");
            columns.bind(":Table", table.name);
            while (columns.step()) table.columns.push_back(columns.getText(0));
        }
        return result;
    }();
    return tables;
}

const std::vector<std::string_view>& PoolTableNames() {
    static const std::vector<std::string_view> names = [] {
        std::vector<std::string_view> result;
        for (const PoolTable& table : RequiredPoolTables()) result.push_back(table.name);
        return result;
    }();
    return names;
}

std::vector<std::string> MissingPoolParts(Database& db) {
    std::vector<std::string> missing;
    Statement columns = db.prepare("SELECT name FROM pragma_table_info(:Table)");
    for (const PoolTable& table : RequiredPoolTables()) {
        columns.reset();
        columns.bind(":Table", table.name);
        std::vector<std::string> present;
        while (columns.step()) present.push_back(columns.getText(0));
        if (present.empty()) {
            missing.push_back("table " + table.name);
            continue;
        }
        for (const std::string& column : table.columns) {
            // Column names, like SQL itself, don't care about case.
            const bool found = std::any_of(present.begin(), present.end(), [&](const std::string& name) {
                return strcasecmp(name.c_str(), column.c_str()) == 0;
            });
            if (!found) missing.push_back("column " + table.name + "." + column);
        }
    }
    return missing;
}

}  // namespace tavlo
