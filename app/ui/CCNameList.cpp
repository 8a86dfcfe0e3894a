#include "ui/CCNameList.h"

#include <QComboBox>

#include "db/Database.h"
#include "ui/QtText.h"

namespace tavlo {

void FillCCNameList(QComboBox* combo, Database& db) {
    try {
        Statement query = db.prepare("SELECT CCNum, CCName FROM CCTable WHERE CCNum <= 120 ORDER BY CCNum");
        while (query.step()) {
            const int number = static_cast<int>(query.getInt("CCNum"));
            combo->addItem(toQt(std::to_string(number) + " - " + query.getText("CCName")), number);
        }
    } catch (const DatabaseError&) {
    }
}

int CCNumberAt(const QComboBox* combo, int line) {
    if (line < 0 || line >= combo->count()) return -1;
    bool ok = false;
    const int number = combo->itemData(line).toInt(&ok);
    return ok ? number : -1;
}

void ShowCCNumber(QComboBox* combo, int ccNumber) { combo->setCurrentIndex(combo->findData(ccNumber)); }

}  // namespace tavlo
