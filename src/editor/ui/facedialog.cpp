#include "editor/ui/facedialog.h"

#include "editor/facepictures.h"
#include "editor/ui/faceview.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

namespace zorbo {

FaceDialog::FaceDialog(const FacePictures &pictures, qint64 code, const std::array<int, 5> &digits, QWidget *parent)
    : QDialog(parent), m_pictures(pictures), m_code(code), m_digits(digits), m_result(code)
{
    setObjectName(QStringLiteral("frmgesicht"));
    setWindowTitle(QStringLiteral("Gesichtseditor"));
    m_view = new FaceView(this);
    m_view->setPictures(&m_pictures);

    auto *colours = new QButtonGroup(this);
    const char *captions[] = {"Helle Hautfarbe", "Dunkler Hautfarbe"};
    for (int i = 0; i < 2; ++i) {
        m_colour[i] = new QRadioButton(QString::fromUtf8(captions[i]), this);
        m_colour[i]->setObjectName(QStringLiteral("opthautfarbe(%1)").arg(i));
        colours->addButton(m_colour[i], i);
    }
    connect(colours, &QButtonGroup::idToggled, this, [this](int id, bool on) {
        if (on)
            colourchanged(id);
    });

    auto *sliders = new QGridLayout;
    const char *labels[] = {"Nase:", "Mund:", "Haare:", "Augen:", "Kinn:"};
    for (int part = 0; part < 5; ++part) {
        auto *s = new QSlider(Qt::Horizontal, this);
        s->setObjectName(QStringLiteral("sldgesicht(%1)").arg(part));
        auto *minus = new QPushButton(QStringLiteral("-"), this);
        minus->setObjectName(QStringLiteral("btnminus(%1)").arg(part));
        auto *plus = new QPushButton(QStringLiteral("+"), this);
        plus->setObjectName(QStringLiteral("btnplus(%1)").arg(part));
        for (QPushButton *b : {minus, plus})
            b->setFixedWidth(24);
        sliders->addWidget(new QLabel(QLatin1String(labels[part]), this), part, 0);
        sliders->addWidget(minus, part, 1);
        sliders->addWidget(s, part, 2);
        sliders->addWidget(plus, part, 3);
        m_slider[size_t(part)] = s;
        m_minus[size_t(part)] = minus;
        m_plus[size_t(part)] = plus;
        connect(s, &QSlider::valueChanged, this, [this, part] { slidermoved(part); });
        connect(plus, &QPushButton::clicked, s, [s] { s->setValue(s->value() + 1); });
        connect(minus, &QPushButton::clicked, s, [s] { s->setValue(s->value() - 1); });
    }

    auto *reset = new QPushButton(QStringLiteral("Reset"), this);
    reset->setObjectName(QStringLiteral("btnreset"));
    reset->setToolTip(QStringLiteral("Alle Werte zurücksetzen"));
    auto *ok = new QPushButton(QStringLiteral("Übernehmen"), this);
    ok->setObjectName(QStringLiteral("btnok"));
    auto *cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("btnabbrechen"));
    connect(reset, &QPushButton::clicked, this, &FaceDialog::loadform);
    connect(ok, &QPushButton::clicked, this, &FaceDialog::takeface);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *right = new QVBoxLayout;
    right->addWidget(m_colour[0]);
    right->addWidget(m_colour[1]);
    right->addLayout(sliders);
    auto *top = new QHBoxLayout;
    top->addWidget(m_view, 0, Qt::AlignTop);
    top->addLayout(right, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(reset);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto *all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addLayout(buttons);
    loadform();
}

int FaceDialog::farbe() const
{
    return m_colour[1]->isChecked() ? 1 : 0;
}

void FaceDialog::loadform()
{
    const int colour = decodeface(m_code).farbe;
    if (m_colour[colour]->isChecked())
        colourchanged(colour);
    else
        m_colour[colour]->setChecked(true);
    for (int part = 0; part < 5; ++part)
        m_slider[size_t(part)]->setValue(m_digits[size_t(part)]);
    m_view->showface(colour, m_digits);
}

void FaceDialog::colourchanged(int colour)
{
    m_loading = true;
    for (int part = 0; part < 5; ++part) {
        QSlider *s = m_slider[size_t(part)];
        const int files = m_pictures.count(colour, part);
        s->setMinimum(0);
        s->setValue(0);
        s->setMaximum(files < 2 ? 1 : files - 1);
        s->setEnabled(files >= 2);
        m_minus[size_t(part)]->setEnabled(false);
        m_plus[size_t(part)]->setEnabled(files >= 2);
    }
    m_loading = false;
    m_view->showface(colour, {0, 0, 0, 0, 0});
}

void FaceDialog::slidermoved(int part)
{
    QSlider *s = m_slider[size_t(part)];
    s->setToolTip(QString::number(s->value()));
    if (m_loading)
        return;
    if (s->isEnabled()) {
        m_minus[size_t(part)]->setEnabled(s->value() > s->minimum());
        m_plus[size_t(part)]->setEnabled(s->value() < s->maximum());
    }
    std::array<int, 5> digits{};
    for (int p = 0; p < 5; ++p)
        digits[size_t(p)] = m_slider[size_t(p)]->value();
    m_view->showface(farbe(), digits);
}

void FaceDialog::takeface()
{
    Face f{farbe(), {}};
    for (int part = 0; part < 5; ++part)
        f.digits[size_t(part)] = m_slider[size_t(part)]->value();
    m_result = encodeface(f);
    accept();
}

} // namespace zorbo
