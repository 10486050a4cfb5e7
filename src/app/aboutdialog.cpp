#include "app/aboutdialog.h"

#include "core/ui/dialogs.h"
#include "generated/version.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zorbo {

AboutDialog::AboutDialog(QWidget *parent, Dialogs *dialogs, const QString &folder) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("Info zu ") + QLatin1String(programName));
    auto *layout = new QVBoxLayout(this);
    const auto addLabel = [&](const char *name, const QString &text) {
        auto *label = new QLabel(text, this);
        label->setObjectName(QLatin1String(name));
        label->setWordWrap(true);
        layout->addWidget(label);
    };
    addLabel("lblTitle", QStringLiteral("<b>%1</b>").arg(QLatin1String(programName)));
    addLabel("lblVersion", QStringLiteral("Version %1.%2.%3").arg(versionMajor).arg(versionMinor).arg(versionRevision));
    addLabel("lblDescription", QString::fromUtf8(fileDescription));
    addLabel("lblDisclaimer", QString::fromUtf8(legalNotice));
    addLabel("lblOrdner", QStringLiteral("Die Welt liegt im Ordner %1.").arg(QDir::toNativeSeparators(folder).toHtmlEscaped()));

    auto *buttons = new QDialogButtonBox(this);
    auto *ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setObjectName(QStringLiteral("cmdOK"));
    auto *sysinfo = buttons->addButton(QStringLiteral("&Systeminfo..."), QDialogButtonBox::ActionRole);
    sysinfo->setObjectName(QStringLiteral("cmdSysInfo"));
    layout->addWidget(buttons);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(sysinfo, &QPushButton::clicked, this, [this, dialogs] {
        dialogs->information(this, windowTitle(), QStringLiteral("Systeminformationen sind momentan nicht verfügbar"));
    });
}

} // namespace zorbo
