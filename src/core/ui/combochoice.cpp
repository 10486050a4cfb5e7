#include "core/ui/combochoice.h"

#include <QAbstractItemModel>
#include <QComboBox>
#include <QPointer>
#include <memory>

namespace zorbo {

namespace {

const char *const heldProperty = "heldText";

void hold(QComboBox *combo, const QString &text)
{
    combo->setCurrentIndex(-1);
    combo->setPlaceholderText(text);
    combo->setProperty(heldProperty, text);
}

struct Choice {
    bool had = false;
    QVariant data;
    QString text;
};

} // namespace

bool choosetext(QComboBox *combo, const QString &text)
{
    const int i = combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (i < 0) {
        hold(combo, text);
        return false;
    }
    combo->setProperty(heldProperty, QString());
    combo->setCurrentIndex(i);
    return true;
}

QString chosentext(const QComboBox *combo)
{
    return combo->currentIndex() >= 0 ? combo->currentText() : combo->property(heldProperty).toString();
}

void keepchoice(QComboBox *combo)
{
    auto choice = std::make_shared<Choice>();
    QPointer<QComboBox> box(combo);
    QAbstractItemModel *model = combo->model();
    QObject::connect(model, &QAbstractItemModel::modelAboutToBeReset, combo, [box, choice] {
        choice->had = box->currentIndex() >= 0 || !box->property(heldProperty).toString().isEmpty();
        choice->data = box->currentData(Qt::UserRole);
        choice->text = chosentext(box);
    });
    QObject::connect(model, &QAbstractItemModel::modelReset, combo, [box, choice] {
        if (!choice->had)
            return;
        if (choice->data.isValid())
            box->setCurrentIndex(box->findData(choice->data, Qt::UserRole, Qt::MatchExactly));
        else
            choosetext(box, choice->text);
    });
    // A choice by the user ends what the box held.
    QObject::connect(combo, &QComboBox::activated, combo, [box] { box->setProperty(heldProperty, QString()); });
}

} // namespace zorbo
