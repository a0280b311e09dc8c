#include "platform/toolkit/windows/OpenPanel.h"

#include "platform/toolkit/windows/ModalResponse.h"
#include "tests/kit/WaitUntil.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <gmock/gmock.h>

namespace {

using namespace tljira;

class OpenPanelTest : public testing::Test
{
protected:
    OpenPanelTest()
    {
        for (const char* name : {"a.txt", "b.txt"}) {
            QFile file(folder.filePath(QString::fromLatin1(name)));
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        }
        QDir(folder.path()).mkdir(QStringLiteral("inner"));
    }
    ~OpenPanelTest() override { OpenPanel::observeDialogs(nullptr); }

    /// Fills the dialog's name field and presses its button.
    void type(const QString& text)
    {
        OpenPanel::observeDialogs([this, text](QFileDialog& dialog) {
            wasVisible = dialog.isVisible();
            mode = dialog.fileMode();
            dialog.setDirectory(folder.path());
            auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
            EXPECT_TRUE(tests::waitUntil([&] { return list->model()->rowCount(list->rootIndex()) > 0; }));
            auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            field->setText(text);
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
            if (dialog.isVisible())
                dialog.reject();
        });
    }

    QTemporaryDir folder;
    OpenPanel panel;
    bool wasVisible = false;
    QFileDialog::FileMode mode = QFileDialog::AnyFile;
};

TEST_F(OpenPanelTest, givesTheFileThatItsUserChose)
{
    type(QStringLiteral("a.txt"));

    EXPECT_EQ(panel.runModal(), ModalResponse::OK);

    EXPECT_TRUE(wasVisible);
    EXPECT_EQ(mode, QFileDialog::ExistingFile);
    EXPECT_EQ(panel.path(), folder.filePath(QStringLiteral("a.txt")));
    EXPECT_EQ(panel.url(), QUrl::fromLocalFile(folder.filePath(QStringLiteral("a.txt"))));
}

TEST_F(OpenPanelTest, givesNothingWhenItIsCancelled)
{
    type(QStringLiteral("a.txt"));
    panel.runModal();
    OpenPanel::observeDialogs([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });

    EXPECT_EQ(panel.runModal(), ModalResponse::Cancel);

    EXPECT_EQ(panel.path(), std::nullopt);
    EXPECT_EQ(panel.url(), std::nullopt);
    EXPECT_TRUE(panel.urls().isEmpty());
}

TEST_F(OpenPanelTest, givesSeveralFilesOnlyWhereThatIsAllowed)
{
    panel.setAllowsMultipleSelection(true);
    type(QStringLiteral("\"a.txt\" \"b.txt\""));

    EXPECT_EQ(panel.runModal(), ModalResponse::OK);

    EXPECT_EQ(panel.urls().size(), 2);
}

TEST_F(OpenPanelTest, givesAFolderWhereOnlyFoldersAreAllowed)
{
    panel.setCanChooseFiles(false);
    panel.setCanChooseDirectories(true);
    type(folder.filePath(QStringLiteral("inner")));

    EXPECT_EQ(panel.runModal(), ModalResponse::OK);

    EXPECT_EQ(mode, QFileDialog::Directory);
    EXPECT_EQ(panel.path(), folder.filePath(QStringLiteral("inner")));
}

TEST_F(OpenPanelTest, doesNotComeUpWhereNothingIsAllowed)
{
    panel.setCanChooseFiles(false);
    type(QStringLiteral("a.txt"));

    EXPECT_EQ(panel.runModal(), ModalResponse::Cancel);

    EXPECT_FALSE(wasVisible);
}

} // namespace
