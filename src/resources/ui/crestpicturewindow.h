#pragma once

#include "resources/crestpicture.h"

#include <QColor>
#include <QDialog>
#include <QImage>
#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QRadioButton;
class QSpinBox;

namespace zorbo {

class Shell;

// "Wappen aus Bild": a picture becomes crest n, shown at the crest's size on
// the colours of the club's kits; the club may wear it at once (its
// GRAFIK_NR set in the same history step). A folder of pictures named by
// club number or name goes in one run, with a list of what became of each.
class CrestPictureWindow : public QDialog {
    Q_OBJECT

public:
    CrestPictureWindow(Shell &shell, QWidget *parent);

    // Opens on crest number and the club on show (team -1: none).
    void prepare(int crest, qint64 team);
    // Reads the picture and shows its crest; false after a message.
    bool setpicture(const QString &path);
    // Writes the crest (and the club's crest number when asked); false
    // after a message. The crest written is told in written().
    bool write();
    // Converts a folder of pictures, listing each.
    void convertfolder(const QString &folder);
    int written() const { return m_written; }
    QImage crest() const { return m_crest; }

private:
    void redraw();
    CrestPictureOptions options() const;

    Shell &m_shell;
    QImage m_picture;
    QImage m_crest;
    QString m_path;
    qint64 m_team = -1;
    QString m_teamName;
    std::array<QColor, 3> m_kits{}; // home, away, goalkeeper shirt
    int m_written = -1;
    QLabel *m_preview;
    QLabel *m_file;
    QRadioButton *m_fit;
    QRadioButton *m_crop;
    QComboBox *m_background;
    QSpinBox *m_number;
    QCheckBox *m_wear;
    QListWidget *m_list;
};

} // namespace zorbo
