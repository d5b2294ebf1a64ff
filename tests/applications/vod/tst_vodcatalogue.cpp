#include "vodcatalogue.h"

#include "testenvironment.h"
#include "vodcataloguefixture.h"

#include <QTest>

#include <memory>

using namespace VodCatalogueFixture;

namespace {
// The lists other than a group's parts.
constexpr int Groups = -100, Titles = -101;
}

class tst_VodCatalogue : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestEnvironment> env;

private slots:
    void initTestCase() { env = std::make_unique<TestEnvironment>(); }

    void layoutOffsets();
    void names_data();
    void names();

    void load_data();
    void load();
};

// The byte offsets themselves, written by hand rather than by the fixture
// writer, so that a writer and a reader sharing a mistake cannot both pass.
void tst_VodCatalogue::layoutOffsets()
{
    QByteArray groups(4 + 2 * 1772, '\x01');
    groups.replace(0, 4, int32le(2));
    groups.replace(8, 4, int32le(0));
    groups.replace(12, 6, QByteArray("first", 6));
    groups.replace(1780, 4, int32le(1));
    groups.replace(1784, 7, QByteArray("second", 7));
    groups.replace(1868, 5, QByteArray("part", 5));
    QCOMPARE(VodCatalogue::groupNames(groups), QStringList({"first", "second"}));
    QCOMPARE(VodCatalogue::partNames(groups, 1), QStringList({"part"}));
    QCOMPARE(VodCatalogue::partNames(groups, 0), QStringList());

    QByteArray contents(16 + 3 * 240, '\x01');
    contents.replace(8, 4, int32le(3));
    contents.replace(16, 2, QByteArray("a", 2));
    contents.replace(256, 2, QByteArray("b", 2));
    contents.replace(496, 2, QByteArray("c", 2));
    QCOMPARE(VodCatalogue::contentTitles(contents), QStringList({"a", "b", "c"}));
}

void tst_VodCatalogue::names_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("group"); // the group whose parts are read; Groups, Titles: the other lists
    QTest::addColumn<QStringList>("names");

    const Group alpha{"alpha", {"a1", "a2", "a3"}};
    const Group beta{"beta", {"b1"}};
    const QByteArray two = groupFile({alpha, beta});
    const QByteArray three = contentsFile({"one", "two", "three"});

    QTest::newRow("two groups") << two << Groups << QStringList({"alpha", "beta"});
    QTest::newRow("no group file") << QByteArray() << Groups << QStringList();
    QTest::newRow("negative group count") << groupFile({alpha, beta}, -2) << Groups << QStringList();
    QTest::newRow("group count cut short") << QByteArray("\x02\x00", 2) << Groups << QStringList();
    QTest::newRow("group count larger than records") << groupFile({alpha, beta}, 5) << Groups
                                                     << QStringList({"alpha", "beta"});
    QTest::newRow("huge group count") << groupFile({alpha}, 0x7fffffff) << Groups << QStringList({"alpha"});
    QTest::newRow("last group truncated") << two.left(two.size() - 100) << Groups << QStringList({"alpha"});
    QTest::newRow("group cut inside its name") << two.left(4 + 1772 + 10) << Groups << QStringList({"alpha"});
    // A name that fills its field runs on into the first part slot.
    QTest::newRow("group name without NUL") << groupFile({Group{QByteArray(84, 'N'), {"p0"}}}) << Groups
                                            << QStringList({QString(84, QLatin1Char('N')) + "p0"});
    // Everything after the count is one name without any NUL: it stops at the
    // longest name read.
    QTest::newRow("no NUL up to the end") << (int32le(1) + QByteArray(1772, 'x')) << Groups
                                          << QStringList({QString(1024, QLatin1Char('x'))});

    QTest::newRow("parts of the first group") << two << 0 << QStringList({"a1", "a2", "a3"});
    QTest::newRow("parts of the second group") << two << 1 << QStringList({"b1"});
    QTest::newRow("negative group") << two << -1 << QStringList();
    QTest::newRow("group beyond the file") << two << 2 << QStringList();
    QTest::newRow("huge group index") << two << 0x7fffffff << QStringList();
    QTest::newRow("negative part count") << groupFile({Group{"g", {"x"}, -5}}) << 0 << QStringList();
    QStringList twenty;
    QList<QByteArray> twentyParts;
    for (int j = 0; j < 20; ++j) {
        twenty << QStringLiteral("p%1").arg(j);
        twentyParts << QByteArray("p") + QByteArray::number(j);
    }
    // The last group of the file claims more than its 20 slots: the slots past
    // them lie beyond the loaded bytes and are not read.
    QTest::newRow("part count above 20, last group") << groupFile({Group{"g", twentyParts, 0x7fffffff}}) << 0
                                                     << twenty;
    QTest::newRow("part count above 20, loaded with its trailing zero")
        << groupFile({Group{"g", twentyParts, 25}}) + QByteArray(1, '\0') << 0 << twenty;
    // With a group after it, slot 20 is the start of the next record (its first
    // integer, 5a 5a 5a 5a, then the part count 1), read like any slot.
    QTest::newRow("part count 21, next record follows")
        << groupFile({Group{"g", twentyParts, 21}}, 1) + groupRecord(Group{"h", {"h1"}}) << 0
        << twenty + QStringList({QString::fromLatin1("\x5a\x5a\x5a\x5a\x01")});
    QTest::newRow("second group truncated inside its slots") << two.left(4 + 1772 + 92 + 84 / 2) << 1
                                                             << QStringList();

    QTest::newRow("three titles") << three << Titles << QStringList({"one", "two", "three"});
    QTest::newRow("header cut inside the count") << three.left(10) << Titles << QStringList();
    QTest::newRow("zero title count") << contentsFile({"one"}, 0) << Titles << QStringList();
    QTest::newRow("negative title count") << contentsFile({"one"}, -3) << Titles << QStringList();
    QTest::newRow("title count larger than records") << contentsFile({"one", "two"}, 4) << Titles
                                                     << QStringList({"one", "two"});
    QTest::newRow("huge title count, truncated file")
        << contentsFile({"one", "two"}, 0x7fffffff).left(16 + 240 + 17) << Titles << QStringList({"one"});
    // The raw bytes are kept, one character per byte; decoding is the list's.
    QTest::newRow("EUC-KR bytes kept raw") << contentsFile({QByteArray("\xb0\xa1", 2)}) << Titles
                                           << QStringList({QString::fromLatin1("\xb0\xa1")});
}

void tst_VodCatalogue::names()
{
    QFETCH(QByteArray, file);
    QFETCH(int, group);
    QFETCH(QStringList, names);
    const QStringList read = group == Groups   ? VodCatalogue::groupNames(file)
                             : group == Titles ? VodCatalogue::contentTitles(file)
                                               : VodCatalogue::partNames(file, group);
    QCOMPARE(read, names);
}

void tst_VodCatalogue::load_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("group file") << groupFile({Group{"alpha", {"a1"}}});
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("shorter file claiming more") << contentsFile({"new"}, 3);
    QTest::newRow("no NUL at the end") << QByteArray(300, 'x');
}

// The buffer is the file and one zero byte more: nothing of an earlier,
// longer copy shows through.
void tst_VodCatalogue::load()
{
    QFETCH(QByteArray, bytes);
    env->writeFile(VodCatalogue::GroupFile, bytes);

    QByteArray buffer = contentsFile({"one", "two", "three"});
    DeviceFile::Stamp stamp;
    QVERIFY(VodCatalogue::load(QLatin1String(VodCatalogue::GroupFile), buffer, stamp));
    QCOMPARE(buffer.size(), bytes.size() + 1);
    QCOMPARE(buffer.left(bytes.size()), bytes);
    QCOMPARE(buffer.at(bytes.size()), '\0');
    env->remove(VodCatalogue::GroupFile);
}

QTEST_GUILESS_MAIN(tst_VodCatalogue)
#include "tst_vodcatalogue.moc"
