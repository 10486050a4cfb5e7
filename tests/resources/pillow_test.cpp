// The editor's files as tools that no one here wrote see them: Pillow reads
// our TGA files and writes the ones we read; Python's zlib inflates our payloads.
#include "resources/crestfixtures.h"
#include "resources/gfp.h"
#include "resources/tga.h"
#include "support/testsupport.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace zorbo;
using namespace zorbo::test;

TEST(CrestPillow, ReadsWhatPillowWrites)
{
    const QString python = pythonWithPillow();
    if (python.isEmpty())
        GTEST_SKIP() << "python3 with Pillow (python3-pil) is not installed";
    TempFolder t;
    QString errors;
    ASSERT_EQ(runPython(python, {"write", t.path()}, &errors), 0) << errors.toStdString();
    const QStringList files = QDir(t.path()).entryList({"*.tga"});
    ASSERT_EQ(files.size(), 8);
    for (const QString &f : files) {
        TgaImage image;
        const Result r = readtga(t.file(f), image);
        ASSERT_TRUE(r.ok) << f.toStdString() << ": " << r.message.toStdString();
        EXPECT_EQ(image.width, 37);
        EXPECT_EQ(image.height, 23);
        EXPECT_EQ(image.pixels, pattern16(37, 23)) << f.toStdString();
    }
}

TEST(CrestPillow, PillowAndZlibReadWhatWeWrite)
{
    const QString python = pythonWithPillow();
    if (python.isEmpty())
        GTEST_SKIP() << "python3 with Pillow (python3-pil) is not installed";
    TempFolder t;
    const QByteArray pixels = pattern16(37, 23);
    writeBytes(t.file("ours.tga"), writetga(37, 23, pixels, 2));
    GfpHeader templ;
    writeBytes(t.file("ours.gfp"), makegfp(templ, 37, 23, pixels, true));
    QString errors;
    EXPECT_EQ(runPython(python, {"check-tga", t.file("ours.tga"), "37", "23"}, &errors), 0) << errors.toStdString();
    EXPECT_EQ(runPython(python, {"check-gfp", t.file("ours.gfp"), "37", "23"}, &errors), 0) << errors.toStdString();
}
