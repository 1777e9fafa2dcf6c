#include "Base/UserDefaults.h"

#include "Base/ScopedVariable.h"
#include "Support/TestFolder.h"

#include <QLockFile>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

const QString key = u"profiles.enabled"_s;

/// A store that is opened anew for each access, so that everything goes through its file.
class StoredDefaults : public testing::Test {
protected:
    UserDefaults open() const
    {
        return UserDefaults(QString::fromStdString((m_folder / "store.ini").native()));
    }
    std::optional<QString> kept(const QString& value) const
    {
        open().setText(key, value);
        return open().text(key);
    }
    std::optional<QStringList> kept(const QStringList& value) const
    {
        open().setTextList(key, value);
        return open().textList(key);
    }
    void writeFile(const QByteArray& text) const { m_folder.write("store.ini", text); }

    const TestFolder m_folder;
};

TEST_F(StoredDefaults, AnAbsentKeyGivesNothing)
{
    EXPECT_EQ(open().text(key), std::nullopt);
    EXPECT_EQ(open().textList(key), std::nullopt);
}

TEST_F(StoredDefaults, TextComesBackUnchanged)
{
    for (const QString& text :
         {u"dark"_s, u""_s, u"a, b"_s, u"\"quoted\" 'text'"_s, u"back\\slash"_s, u"line\nbreak"_s,
          u" blanks "_s, u"@Invalid()"_s, u"true"_s, u"%20;=#"_s, u"\u00E9\u4E2D\U0001F3AC"_s})
        EXPECT_EQ(kept(text), text);
}

TEST_F(StoredDefaults, ListsComeBackUnchanged)
{
    for (const QStringList& list :
         {QStringList{}, QStringList{u"one"_s}, QStringList{u""_s}, QStringList{u""_s, u""_s},
          QStringList{u"b"_s, u"a"_s, u"b"_s},
          QStringList{u"a, b"_s, u"\"q\""_s, u"[x]"_s, u"\u00E9\U0001F3AC"_s, u"\\n\n"_s}})
        EXPECT_EQ(kept(list), list);
}

TEST_F(StoredDefaults, ALaterValueReplacesAnEarlierOne)
{
    kept(QStringList{u"a"_s});
    EXPECT_EQ(kept(QStringList{}), QStringList{});
    EXPECT_EQ(kept(u"dark"_s), u"dark"_s);
    EXPECT_EQ(open().textList(key), std::nullopt);
}

TEST_F(StoredDefaults, DottedKeysAreDistinct)
{
    open().setText(u"guides.thirds"_s, u"on"_s);
    open().setText(u"guides"_s, u"off"_s);
    EXPECT_EQ(open().text(u"guides.thirds"_s), u"on"_s);
    EXPECT_EQ(open().text(u"guides"_s), u"off"_s);
}

TEST_F(StoredDefaults, AValueOfAnotherTypeGivesNothing)
{
    writeFile("[General]\nlist=a, b\nnumbers=\"[1, 2]\"\nobject=\"{}\"\nbytes=@ByteArray(x)\n");
    EXPECT_EQ(open().text(u"list"_s), std::nullopt);
    EXPECT_EQ(open().text(u"bytes"_s), std::nullopt);
    EXPECT_EQ(open().textList(u"list"_s), std::nullopt);
    EXPECT_EQ(open().textList(u"numbers"_s), std::nullopt);
    EXPECT_EQ(open().textList(u"object"_s), std::nullopt);
}

TEST_F(StoredDefaults, ADamagedFileGivesNothingAndCanBeWrittenAgain)
{
    writeFile(QByteArray("\0\xFF[[[\n=\n@@\n", 12));
    EXPECT_EQ(open().text(key), std::nullopt);
    EXPECT_EQ(kept(u"dark"_s), u"dark"_s);
}

TEST_F(StoredDefaults, SettingDoesNotWaitForTheFile)
{
    const QString file = QString::fromStdString((m_folder / "store.ini").native());
    UserDefaults defaults(file);
    QLockFile lock(file + u".lock"_s); // as another program that writes holds it
    ASSERT_TRUE(lock.lock());
    defaults.setText(key, u"light"_s);
    defaults.setText(key, u"dark"_s);
    defaults.setText(u"guides"_s, u"on"_s);
    EXPECT_EQ(defaults.text(key), u"dark"_s);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "store.ini"));
    lock.unlock();
    defaults.waitUntilWritten();
    EXPECT_EQ(open().text(key), u"dark"_s);
    EXPECT_EQ(open().text(u"guides"_s), u"on"_s);
}

TEST(UserDefaults, AStoreThatCannotBeWrittenStillServesTheRun)
{
    const TestFolder folder;
    folder.write("file", "");
    UserDefaults defaults(QString::fromStdString((folder / "file/store.ini").native()));
    defaults.setText(key, u"dark"_s);
    EXPECT_EQ(defaults.text(key), u"dark"_s);
}

TEST(UserDefaults, TheStoreOfTheUserLiesInTheConfigFolder)
{
    const TestFolder folder;
    const ScopedVariable config("XDG_CONFIG_HOME", folder.path());
    UserDefaults().setText(key, u"dark"_s);
    EXPECT_EQ(UserDefaults().text(key), u"dark"_s);
    EXPECT_TRUE(contents(folder / "Vantroque/vantroque.ini").contains("dark"));
}

} // namespace
} // namespace vantroque
