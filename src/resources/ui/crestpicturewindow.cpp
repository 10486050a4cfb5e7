#include "resources/ui/crestpicturewindow.h"

#include "core/ui/dialogs.h"
#include "core/ui/shell.h"
#include "resources/crestfiles.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace zorbo {

namespace {

// A colour text of the team tables, "144, 32, 56"; white when it is none.
QColor colourof(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return Qt::white;
    int rgb[3];
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        rgb[i] = parts[i].trimmed().toInt(&ok);
        if (!ok || rgb[i] < 0 || rgb[i] > 255)
            return Qt::white;
    }
    return QColor(rgb[0], rgb[1], rgb[2]);
}

constexpr int tile = 84;

} // namespace

CrestPictureWindow::CrestPictureWindow(Shell &shell, QWidget *parent)
    : QDialog(parent), m_shell(shell), m_preview(new QLabel(this)), m_file(new QLabel(this)),
      m_fit(new QRadioButton(QStringLiteral("&Einpassen (ganzes Bild, Rand bleibt frei)"), this)),
      m_crop(new QRadioButton(QStringLiteral("&Zuschneiden (Mitte, 64 × 64)"), this)), m_background(new QComboBox(this)),
      m_number(new QSpinBox(this)), m_wear(new QCheckBox(this)), m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("frmwappenbild"));
    setWindowTitle(QStringLiteral("Wappen aus Bild"));
    m_preview->setObjectName(QStringLiteral("picvorschau"));
    m_preview->setFixedSize(3 * tile, tile);
    m_file->setObjectName(QStringLiteral("lbldatei"));
    m_fit->setObjectName(QStringLiteral("optfit"));
    m_crop->setObjectName(QStringLiteral("optcrop"));
    m_fit->setChecked(true);
    auto *group = new QButtonGroup(this);
    group->addButton(m_fit);
    group->addButton(m_crop);
    m_background->setObjectName(QStringLiteral("cbohintergrund"));
    m_background->addItems({QStringLiteral("Weiß"), QStringLiteral("Heimtrikot"), QStringLiteral("Auswärtstrikot"),
                            QStringLiteral("Torwarttrikot")});
    m_number->setObjectName(QStringLiteral("txtwappennr"));
    m_number->setRange(0, CrestCount - 1);
    m_wear->setObjectName(QStringLiteral("chkverein"));
    m_list->setObjectName(QStringLiteral("lstergebnis"));

    auto *picture = new QPushButton(QStringLiteral("&Bild..."), this);
    picture->setObjectName(QStringLiteral("btnbild"));
    auto *folder = new QPushButton(QStringLiteral("&Ordner umwandeln..."), this);
    folder->setObjectName(QStringLiteral("btnordner"));
    auto *write = new QPushButton(QStringLiteral("&Schreiben"), this);
    write->setObjectName(QStringLiteral("btnschreiben"));
    auto *close = new QPushButton(QStringLiteral("Schließen"), this);
    close->setObjectName(QStringLiteral("btnschliessen"));

    auto *form = new QGridLayout;
    form->addWidget(picture, 0, 0);
    form->addWidget(m_file, 0, 1);
    form->addWidget(m_fit, 1, 0, 1, 2);
    form->addWidget(m_crop, 2, 0, 1, 2);
    form->addWidget(new QLabel(QStringLiteral("Durchsichtiges zeigt:"), this), 3, 0);
    form->addWidget(m_background, 3, 1);
    form->addWidget(new QLabel(QStringLiteral("Wappennummer:"), this), 4, 0);
    form->addWidget(m_number, 4, 1);
    form->addWidget(m_wear, 5, 0, 1, 2);
    auto *shown = new QGroupBox(QStringLiteral("Vorschau auf den Trikotfarben"), this);
    (new QVBoxLayout(shown))->addWidget(m_preview);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(folder);
    buttons->addStretch(1);
    buttons->addWidget(write);
    buttons->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    auto *top = new QHBoxLayout;
    top->addLayout(form, 1);
    top->addWidget(shown);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);
    m_list->hide();

    connect(picture, &QPushButton::clicked, this, [this] {
        const QString file = QFileDialog::getOpenFileName(
            this, QStringLiteral("Bild öffnen"), m_path.isEmpty() ? QDir::homePath() : QFileInfo(m_path).absolutePath(),
            QStringLiteral("Bilder (%1)").arg(picturepatterns()));
        if (!file.isEmpty())
            setpicture(file);
    });
    connect(folder, &QPushButton::clicked, this, [this] {
        const QString dir = QFileDialog::getExistingDirectory(this, QStringLiteral("Ordner mit Bildern"));
        if (!dir.isEmpty())
            convertfolder(dir);
    });
    connect(write, &QPushButton::clicked, this, [this] {
        if (this->write())
            accept();
    });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_fit, &QRadioButton::toggled, this, &CrestPictureWindow::redraw);
    connect(m_background, &QComboBox::currentIndexChanged, this, &CrestPictureWindow::redraw);
}

void CrestPictureWindow::prepare(int crest, qint64 team)
{
    m_team = -1;
    m_teamName.clear();
    m_kits.fill(Qt::white);
    m_written = -1;
    m_number->setValue(std::clamp(crest, 0, CrestCount - 1));
    if (Database *db = m_shell.db(); db && team >= 0) {
        for (const QString table : {QStringLiteral("vereine"), QStringLiteral("vereine_national")}) {
            Statement st = db->prepare(QStringLiteral("SELECT NAME, F_TRIKOT_SPIELER, F_AUSW_TRIKOT_SPIELER, "
                                                      "F_TRIKOT_TORWART FROM %1 WHERE NUMMER = ?1")
                                           .arg(table));
            st.bind(1, team);
            if (st.step()) {
                m_team = team;
                m_teamName = st.text(0);
                for (int i = 0; i < 3; ++i)
                    m_kits[size_t(i)] = colourof(st.text(i + 1));
                break;
            }
        }
    }
    m_wear->setText(m_team >= 0 ? QStringLiteral("„%1“ trägt das Wappen (GRAFIK_NR)").arg(m_teamName)
                                : QStringLiteral("Kein Verein gewählt"));
    m_wear->setEnabled(m_team >= 0);
    m_wear->setChecked(m_team >= 0);
    m_list->clear();
    m_list->hide();
    redraw();
}

CrestPictureOptions CrestPictureWindow::options() const
{
    CrestPictureOptions o;
    o.fit = m_crop->isChecked() ? CrestFit::Crop : CrestFit::Fit;
    const int background = m_background->currentIndex();
    o.background = background <= 0 ? QColor(Qt::white) : m_kits[size_t(background - 1)];
    return o;
}

bool CrestPictureWindow::setpicture(const QString &path)
{
    QImage picture;
    if (Result r = loadpicture(path, picture); !r) {
        m_shell.dialogs().warning(this, windowTitle(), r.message);
        return false;
    }
    m_path = path;
    m_picture = picture;
    m_file->setText(QStringLiteral("%1 (%2 × %3)").arg(QFileInfo(path).fileName()).arg(picture.width()).arg(picture.height()));
    redraw();
    return true;
}

void CrestPictureWindow::redraw()
{
    m_crest = m_picture.isNull() ? QImage() : crestpicture(m_picture, options());
    QPixmap shown(m_preview->size());
    shown.fill(palette().window().color());
    QPainter p(&shown);
    for (int i = 0; i < 3; ++i) {
        const QRect box(i * tile, 0, tile, tile);
        p.fillRect(box.adjusted(2, 2, -2, -2), m_kits[size_t(i)]);
        if (!m_crest.isNull())
            p.drawImage(box.center() - QPoint(m_crest.width() / 2, m_crest.height() / 2) + QPoint(1, 1), m_crest);
    }
    p.end();
    m_preview->setPixmap(shown);
}

bool CrestPictureWindow::write()
{
    if (m_crest.isNull()) {
        m_shell.dialogs().warning(this, windowTitle(), QStringLiteral("Es ist noch kein Bild gewählt."));
        return false;
    }
    const int n = m_number->value();
    const QString wappen = m_shell.settings().folder(WappenFolder);
    const QString file = QFileInfo(crestfile(wappen, n)).fileName();
    Result r;
    QString kept;
    if (m_wear->isChecked() && m_team >= 0) {
        // The club's number and the file in one step; the file goes last, so
        // a refused step leaves it as it was.
        r = m_shell.run(
            [&](Database &db) {
                setcrestnumber(db, m_team, n);
                return writecrest(wappen, n, m_crest, &kept);
            },
            {},
            Step{QStringLiteral("Wappen %1 aus Bild %2 für „%3“ (%4 geschrieben)")
                     .arg(n)
                     .arg(QFileInfo(m_path).fileName(), m_teamName, file)});
    } else {
        r = writecrest(wappen, n, m_crest, &kept);
    }
    if (!r) {
        m_shell.dialogs().warning(this, windowTitle(), r.message);
        return false;
    }
    m_written = n;
    m_shell.status(QStringLiteral("%1 aus %2 geschrieben%3.").arg(file, QFileInfo(m_path).fileName(), keptwords(kept)));
    return true;
}

void CrestPictureWindow::convertfolder(const QString &folder)
{
    const QString wappen = m_shell.settings().folder(WappenFolder);
    QList<PictureRunLine> lines;
    Result r;
    {
        const auto busy = m_shell.busy(QStringLiteral("Wandle Bilder um..."));
        const Progress progress = busy->progress();
        const CrestPictureOptions o = options();
        r = m_shell.run(
            [&](Database &db) {
                lines = crestsfrompictures(db, picturetargets(db, folder, wappen), wappen, o, progress);
                return Result::success();
            },
            {}, Step{QStringLiteral("Wappen aus den Bildern von %1").arg(QDir::toNativeSeparators(folder))});
    }
    m_list->clear();
    m_list->show();
    if (!r) {
        m_list->addItem(r.message);
        return;
    }
    int done = 0;
    for (const PictureRunLine &l : std::as_const(lines)) {
        auto *item = new QListWidgetItem(l.picture + QStringLiteral(": ") + l.text, m_list);
        if (!l.done)
            item->setForeground(Qt::darkRed);
        done += l.done;
    }
    m_list->addItem(QStringLiteral("%1 von %2 Bildern als Wappen geschrieben.").arg(done).arg(lines.size()));
}

} // namespace zorbo
