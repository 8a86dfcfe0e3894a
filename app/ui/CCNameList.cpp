#include "ui/CCNameList.h"

#include <QComboBox>
#include <cstdio>

#include "db/Database.h"
#include "ui/QtText.h"

namespace tavlo {

void FillCCNameList(QComboBox* combo, Database& db) {
    try {
        Statement query = db.prepare("SELECT CCNum, CCName FROM CCTable ORDER BY CCNum");
        while (query.step()) {
            char head[16];
            std::snprintf(head, sizeof head, "%03d", static_cast<int>(query.getInt("CCNum")));
            combo->addItem(toQt(std::string(head) + "  " + query.getText("CCName")));
        }
    } catch (const DatabaseError&) {
    }
    for (int n = combo->count(); n < 128; ++n) combo->addItem(QString("%1").arg(n, 3, 10, QChar('0')));
}

}  // namespace tavlo
