// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The rules that every command of the tool follows on the command line: how options are read,
// where help, errors and output go, and the exit status.
#include "specialentries.h"
#include "testenv.h"
#include "toolrun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <sys/stat.h>

namespace {

using ToolRun::Result;
using ToolRun::Setup;

const QStringList commandNames = {"workspace", "position read", "position write", "json",
                                  "config",    "publish",       "scramble",       "unscramble"};

const QByteArray sixValues("left 1\ntop 2\nright 3\nbottom 4\ntransparency 5\nlayer 6\n");

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// What an entry is, down to its inode, and what it holds: equal states mean it was left alone.
struct EntryState
{
    mode_t mode = 0;
    ino_t inode = 0;
    QByteArray bytes;
    QStringList children;

    bool operator==(const EntryState &other) const
    {
        return mode == other.mode && inode == other.inode && bytes == other.bytes &&
               children == other.children;
    }
};

char *toString(const EntryState &state)
{
    return QTest::toString(QStringLiteral("mode %1 inode %2, %3 bytes, %4 entries")
                               .arg(state.mode, 0, 8)
                               .arg(state.inode)
                               .arg(state.bytes.size())
                               .arg(state.children.size()));
}

EntryState entryState(const QString &path)
{
    EntryState state;
    struct stat st;
    if (::lstat(QFile::encodeName(path).constData(), &st) != 0)
        return state;
    state.mode = st.st_mode;
    state.inode = st.st_ino;
    // Only a regular file is read: opening a FIFO would wait for a writer.
    if (S_ISREG(st.st_mode))
        state.bytes = readBytes(path);
    if (S_ISDIR(st.st_mode))
        state.children = QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                              QDir::NoDotAndDotDot);
    return state;
}

bool isOneLine(const QByteArray &text)
{
    return text.endsWith('\n') && text.count('\n') == 1 && text.size() > 1;
}

QStringList words(const QString &name)
{
    return name.split(QLatin1Char(' '));
}

} // namespace

class TestCommandLine : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    int m_count = 0;
    QString m_xml;     // a small description
    QString m_dashDir; // holds files whose names begin with a dash

    QString fresh(const QString &name)
    {
        return m_dir.filePath(QStringLiteral("%1-%2").arg(++m_count).arg(name));
    }

    // A workspace of the built bundle, of its own so that what a row writes is seen alone.
    QString freshWorkspace()
    {
        const QString workspace = fresh(QStringLiteral("ws"));
        const Result made = ToolRun::run({"workspace", "--workspace", workspace});
        return made.exitCode == 0 ? workspace : QString();
    }

    // The arguments of command writing to a fresh target, whose path is answered (empty when the
    // workspace for it could not be made).
    QString writeTarget(const QString &command, QStringList *args)
    {
        if (command == QLatin1String("position write")) {
            const QString target = fresh(QStringLiteral("settings.dat"));
            *args = QStringList{"position", "write", target, "1", "2", "3", "4", "5", "6"};
            return target;
        }
        const QString workspace = freshWorkspace();
        if (workspace.isEmpty())
            return QString();
        *args = QStringList{command, "--workspace", workspace};
        return workspace + (command == QLatin1String("config") ? "/config.js" : "/bookPlugin.js");
    }

private slots:
    void initTestCase()
    {
        TestEnv::isolate();
        QVERIFY(m_dir.isValid());
        m_xml = fresh(QStringLiteral("img.xml"));
        QVERIFY(writeBytes(m_xml, "<info><src type=\"file\">pic.png</src></info>"));
        QVERIFY(writeBytes(m_dir.filePath(QStringLiteral("pic.png")), "png"));
        m_dashDir = fresh(QStringLiteral("dashes"));
        QVERIFY(writeBytes(m_dashDir + "/-p.dat", "1\n2\n3\n4\n5\n6"));
        QVERIFY(writeBytes(m_dashDir + "/--help", "1\n2\n3\n4\n5\n6"));
        QVERIFY(writeBytes(m_dashDir + "/-d.xml", "<info><a type=\"text\">1</a></info>"));
    }

    // ---- help and version

    void helpAndVersionGoToStandardOutput_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("firstLine");
        const QString overview = QStringLiteral("Usage: imgbundle COMMAND [ARGUMENTS]");
        QTest::newRow("--help prints the overview") << QStringList{"--help"} << overview;
        QTest::newRow("-h prints the overview") << QStringList{"-h"} << overview;
        QTest::newRow("a group's --help prints its overview")
            << QStringList{"position", "--help"} << overview;
        QTest::newRow("--version prints the project's version")
            << QStringList{"--version"} << QStringLiteral("imgbundle " IMG_VERSION);
        for (const QString &name : commandNames)
            QTest::addRow("%s --help prints its usage", qPrintable(name))
                << words(name) + QStringList{"--help"} << "Usage: imgbundle " + name;
        QTest::newRow("--help after an argument still helps")
            << QStringList{"position", "read", "no-such-file", "--help"}
            << QStringLiteral("Usage: imgbundle position read FILE");
    }

    void helpAndVersionGoToStandardOutput()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, firstLine);
        const Result r = ToolRun::run(args);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.err, QByteArray());
        const QString line = QString::fromUtf8(r.out).section(QLatin1Char('\n'), 0, 0);
        QVERIFY2(line == firstLine || line.startsWith(firstLine + ' '), qPrintable(line));
        if (args == QStringList{"--version"})
            QCOMPARE(r.out, (firstLine + "\n").toUtf8());
    }

    // The overview states the rules it follows, so that a reader of --help (and of the manual
    // page made from it) learns them.
    void overviewStatesTheRules()
    {
        const Result r = ToolRun::run({"--help"});
        for (const char *rule : {"\"--\" ends them", "given twice", "\"-\" for standard input",
                                 "Exit status: 0", "2 for a wrong argument"})
            QVERIFY2(r.out.contains(rule), rule);
    }

    // ---- wrong use: one line on standard error, exit status 2, nothing on standard output

    void wrongUseGoesToStandardError_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("said");
        QTest::newRow("no command at all") << QStringList{} << QByteArray("missing command");
        QTest::newRow("an unknown option of the tool")
            << QStringList{"--colour"} << QByteArray("unknown option \"--colour\"");
        for (const QString &name : commandNames)
            QTest::addRow("an unknown option of %s", qPrintable(name))
                << words(name) + QStringList{"--colour=red"}
                << QByteArray("unknown option \"--colour\"");
        QTest::newRow("an unknown single-dash option")
            << QStringList{"json", m_xml, "-relate-to", "x"}
            << QByteArray("unknown option \"-relate-to\"");
        QTest::newRow("an option without its value")
            << QStringList{"json", m_xml, "--relate"} << QByteArray("--relate");
        QTest::newRow("an option with an empty value")
            << QStringList{"json", m_xml, "--relate="} << QByteArray("--relate needs a value");
        QTest::newRow("--help with a value")
            << QStringList{"scramble", "--help=yes"} << QByteArray("--help");
        QTest::newRow("an option after -- is an argument")
            << QStringList{"json", "--", m_xml, "--relate", "x"} << QByteArray("expects one");
    }

    void wrongUseGoesToStandardError()
    {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, said);
        const Result r = ToolRun::run(args);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 2);
        QCOMPARE(r.out, QByteArray());
        QVERIFY2(isOneLine(r.err), r.err.constData());
        QVERIFY2(r.err.contains(said), r.err.constData());
    }

    // An option given twice is an error in every command, even with the same value twice, and
    // nothing is done.
    void repeatedOptionIsAnError_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("notMade");
        const QString a = fresh(QStringLiteral("a"));
        const QString b = fresh(QStringLiteral("b"));
        QTest::newRow("workspace --workspace twice")
            << QStringList{"workspace", "--workspace", a, "--workspace", b} << a;
        QTest::newRow("workspace --workspace twice, the second one is not taken either")
            << QStringList{"workspace", "--workspace", a, "--workspace", b} << b;
        QTest::newRow("workspace --bundle twice, in both spellings")
            << QStringList{"workspace",   "--bundle=" IMG_BUNDLE_DIR,
                           "--bundle",    IMG_BUNDLE_DIR,
                           "--workspace", a}
            << a;
        QTest::newRow("json --relate twice with one value")
            << QStringList{"json", m_xml, "--relate", "x", "-relate", "x"} << QString();
        QTest::newRow("json --workspace twice")
            << QStringList{"json", "--workspace=" + a, m_xml, "--workspace=" + a} << QString();
        const QString configWs = freshWorkspace();
        QTest::newRow("config --workspace twice")
            << QStringList{"config", "--workspace", configWs, "--workspace", configWs}
            << configWs + "/config.js";
        const QString publishWs = freshWorkspace();
        QTest::newRow("publish --workspace twice")
            << QStringList{"publish", "--workspace", publishWs, "--workspace=" + publishWs}
            << publishWs + "/bookPlugin.js";
    }

    void repeatedOptionIsAnError()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, notMade);
        const Result r = ToolRun::run(args);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 2);
        QCOMPARE(r.out, QByteArray());
        QVERIFY2(isOneLine(r.err) && r.err.contains("given twice"), r.err.constData());
        if (!notMade.isEmpty())
            QVERIFY2(!QFileInfo::exists(notMade), qPrintable(notMade));
    }

    // ---- where options stand

    void doubleDashEndsOptions_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("printed");
        QTest::newRow("position read -- -p.dat reads the file")
            << QStringList{"position", "read", "--", "-p.dat"} << 0 << sixValues;
        QTest::newRow("position read -p.dat is an unknown option")
            << QStringList{"position", "read", "-p.dat"} << 2 << QByteArray();
        QTest::newRow("position read -- --help reads a file named --help")
            << QStringList{"position", "read", "--", "--help"} << 0 << sixValues;
        QTest::newRow("json -- -d.xml reads the file")
            << QStringList{"json", "--", "-d.xml"} << 0 << QByteArray("{\"a\":\"1\"}\n");
        QTest::newRow("position write -- -w.dat writes the file")
            << QStringList{"position", "write", "--", "-w.dat", "1", "2", "3", "4", "5", "6"} << 0
            << QByteArray();
    }

    void doubleDashEndsOptions()
    {
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, printed);
        Setup setup;
        setup.workingDir = m_dashDir;
        const Result r = ToolRun::run(args, setup);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, exitCode);
        QCOMPARE(r.out, printed);
        if (args.contains("-w.dat"))
            QCOMPARE(readBytes(m_dashDir + "/-w.dat"), QByteArray("1.0\n2.0\n3.0\n4.0\n5.0\n6"));
    }

    void optionsMayStandAnywhere_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("an option before the file") << QStringList{"json", "--relate", "r", m_xml};
        QTest::newRow("an option after the file") << QStringList{"json", m_xml, "--relate", "r"};
        QTest::newRow("an option with = and one dash") << QStringList{"json", "-relate=r", m_xml};
    }

    // --relate puts the existing picture under r/, wherever the option stands.
    void optionsMayStandAnywhere()
    {
        QFETCH(QStringList, args);
        const Result r = ToolRun::run(args);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(r.out, QByteArray("{\"src\":\"r/pic.png\"}\n"));
    }

    // ---- standard output that cannot be written

    // Each row first writes to a file, to show that it prints something, then to /dev/full,
    // which takes no byte: the run must then fail and say so, never claim success.
    void fullStandardOutputIsAFailure_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("input");
        QTest::newRow("scramble") << QStringList{"scramble"} << QByteArray("var a=1;");
        QTest::newRow("scramble of a megabyte, more than a buffer")
            << QStringList{"scramble"} << QByteArray(1024 * 1024, 'x');
        Setup text;
        text.input = "var a=1;";
        QTest::newRow("unscramble")
            << QStringList{"unscramble"} << ToolRun::run({"scramble"}, text).out;
        QTest::newRow("json") << QStringList{"json", m_xml} << QByteArray();
        QTest::newRow("position read")
            << QStringList{"position", "read", m_dashDir + "/-p.dat"} << QByteArray();
        QTest::newRow("workspace")
            << QStringList{"workspace", "--workspace", fresh(QStringLiteral("ws"))} << QByteArray();
        QTest::newRow("config") << QStringList{"config", "--workspace", freshWorkspace()}
                                << QByteArray();
        QTest::newRow("--help") << QStringList{"--help"} << QByteArray();
        QTest::newRow("--version") << QStringList{"--version"} << QByteArray();
        QTest::newRow("json --help") << QStringList{"json", "--help"} << QByteArray();
    }

    void fullStandardOutputIsAFailure()
    {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, input);
        if (!QFileInfo(QStringLiteral("/dev/full")).exists())
            QSKIP("no /dev/full here");
        Setup setup;
        setup.input = input;
        setup.standardOutFile = fresh(QStringLiteral("out"));
        const Result fine = ToolRun::run(args, setup);
        QCOMPARE(fine.exitCode, 0);
        QVERIFY(!readBytes(setup.standardOutFile).isEmpty());

        setup.standardOutFile = QStringLiteral("/dev/full");
        const Result full = ToolRun::run(args, setup);
        QVERIFY(!full.crashed);
        QCOMPARE(full.exitCode, 1);
        QVERIFY2(isOneLine(full.err) && full.err.contains("cannot write standard output"),
                 full.err.constData());
    }

    // ---- write targets

    // A FIFO, socket or folder where a file is to be written is refused and stays as it was: the
    // file is written by renaming a sibling over the target, which would swap the special file
    // for a regular one (as root even a device such as /dev/full).
    void specialWriteTargetIsRefused_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<SpecialEntries::Kind>("kind");
        for (const char *command : {"position write", "config", "publish"}) {
            QTest::addRow("%s onto a FIFO", command) << command << SpecialEntries::Fifo;
            QTest::addRow("%s onto a folder", command) << command << SpecialEntries::Folder;
            QTest::addRow("%s onto a socket", command) << command << SpecialEntries::Socket;
        }
    }

    void specialWriteTargetIsRefused()
    {
        QFETCH(QString, command);
        QFETCH(SpecialEntries::Kind, kind);
        QStringList args;
        const QString target = writeTarget(command, &args);
        QVERIFY(!target.isEmpty());
        QVERIFY(SpecialEntries::make(kind, target, fresh(QStringLiteral("elsewhere"))));
        const EntryState before = entryState(target);

        const Result r = ToolRun::run(args);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 1);
        QCOMPARE(r.out, QByteArray());
        QVERIFY2(isOneLine(r.err) && r.err.contains("left as it is"), r.err.constData());
        QCOMPARE(entryState(target), before);
    }

    // A link where a file is to be written is replaced by the file, as everywhere in the
    // workspace: never written through, so what it points to stays as it was.
    void linkWriteTargetIsReplaced_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<SpecialEntries::Kind>("kind");
        for (const char *command : {"position write", "config", "publish"}) {
            QTest::addRow("%s onto a link to a file", command)
                << command << SpecialEntries::LinkToFile;
            QTest::addRow("%s onto a link to a FIFO", command)
                << command << SpecialEntries::LinkToFifo;
        }
    }

    void linkWriteTargetIsReplaced()
    {
        QFETCH(QString, command);
        QFETCH(SpecialEntries::Kind, kind);
        QStringList args;
        const QString target = writeTarget(command, &args);
        QVERIFY(!target.isEmpty());
        QVERIFY(SpecialEntries::make(kind, target, fresh(QStringLiteral("elsewhere")), "old"));
        const QString pointee = QFileInfo(target).symLinkTarget();
        const EntryState pointeeBefore = entryState(pointee);

        const Result r = ToolRun::run(args);
        QVERIFY2(!r.crashed && r.exitCode == 0, r.err.constData());
        QVERIFY(!QFileInfo(target).isSymLink());
        QVERIFY(QFileInfo(target).isFile());
        QVERIFY(readBytes(target) != "old");
        QCOMPARE(entryState(pointee), pointeeBefore);
    }

    // ---- "-" for standard input (and, for position write, standard output)

    void dashIsStandardInput_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QByteArray>("printed"); // for scramble: once unscrambled
        const QByteArray xml = readBytes(m_xml);
        const QByteArray script("var bookPlugin={\"a\":1};\n");
        Setup toScramble;
        toScramble.input = script;
        const QByteArray scrambled = ToolRun::run({"scramble"}, toScramble).out;

        QTest::newRow("position read - reads standard input")
            << QStringList{"position", "read", "-"} << QByteArray("1\r\n2\n3\n4\n5\n6\n")
            << sixValues;
        QTest::newRow("position read - of five lines is all zeros")
            << QStringList{"position", "read", "-"} << QByteArray("1\n2\n3\n4\n5")
            << QByteArray("left 0\ntop 0\nright 0\nbottom 0\ntransparency 0\nlayer 0\n");
        QTest::newRow("json - reads standard input, files beside the current folder")
            << QStringList{"json", "-", "--relate", "r"} << xml
            << QByteArray("{\"src\":\"r/pic.png\"}\n");
        QTest::newRow("scramble - reads standard input")
            << QStringList{"scramble", "-"} << script << script;
        QTest::newRow("unscramble - reads standard input")
            << QStringList{"unscramble", "-"} << scrambled << script;
        QTest::newRow("position write - writes standard output")
            << QStringList{"position", "write", "-", "1", "2", "3", "4", "5", "-6"} << QByteArray()
            << QByteArray("1.0\n2.0\n3.0\n4.0\n5.0\n-6");
    }

    void dashIsStandardInput()
    {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, input);
        QFETCH(QByteArray, printed);
        Setup setup;
        setup.input = input;
        setup.workingDir = m_dir.path(); // where pic.png is
        const Result r = ToolRun::run(args, setup);
        QVERIFY2(!r.crashed && r.exitCode == 0, r.err.constData());
        QCOMPARE(r.err, QByteArray());
        QByteArray out = r.out;
        if (args.first() == QLatin1String("scramble")) {
            setup.input = out;
            out = ToolRun::run({"unscramble"}, setup).out;
        }
        QCOMPARE(out, printed);
        QVERIFY(!QFileInfo::exists(m_dir.filePath(QStringLiteral("-"))));
    }

    // The filters read standard input only; "-" may name it, anything else is a wrong argument.
    void filterTakesNoFile_data()
    {
        QTest::addColumn<QStringList>("args");
        const QString file = fresh(QStringLiteral("script.js"));
        QVERIFY(writeBytes(file, "var a=1;"));
        QTest::newRow("scramble of a file") << QStringList{"scramble", file};
        QTest::newRow("unscramble of a file") << QStringList{"unscramble", file};
        QTest::newRow("scramble of - and a file") << QStringList{"scramble", "-", file};
        QTest::newRow("unscramble of - twice") << QStringList{"unscramble", "-", "-"};
    }

    void filterTakesNoFile()
    {
        QFETCH(QStringList, args);
        Setup setup;
        setup.input = "var a=1;";
        const Result r = ToolRun::run(args, setup);
        QVERIFY(!r.crashed);
        QCOMPARE(r.exitCode, 2);
        QCOMPARE(r.out, QByteArray());
        QVERIFY2(isOneLine(r.err) && r.err.contains("unexpected argument"), r.err.constData());
    }

    // ---- standard streams that are not streams

    // A shell can hand the tool a folder or nothing at all as standard input, and a closed
    // standard output: each is an error with the system's reason, never an empty text.
    void unusableStandardStreamsAreErrors_data()
    {
        QTest::addColumn<QString>("shell");
        QTest::addColumn<QByteArray>("reason");
        const QByteArray folder("cannot read standard input: Is a directory");
        const QByteArray closed("cannot read standard input: it is closed (Bad file descriptor)");
        const QByteArray noOutput("cannot write standard output: Bad file descriptor");
        QTest::newRow("scramble from a folder") << "\"$0\" scramble < /" << folder;
        QTest::newRow("unscramble from a folder") << "\"$0\" unscramble < /" << folder;
        QTest::newRow("json - from a folder") << "\"$0\" json - < /" << folder;
        QTest::newRow("position read - from a folder") << "\"$0\" position read - < /" << folder;
        QTest::newRow("scramble from a closed input") << "\"$0\" scramble <&-" << closed;
        QTest::newRow("unscramble from a closed input") << "\"$0\" unscramble <&-" << closed;
        QTest::newRow("position read - from a closed input")
            << "\"$0\" position read - <&-" << closed;
        QTest::newRow("scramble into a closed output")
            << "echo text | \"$0\" scramble >&-" << noOutput;
        QTest::newRow("--help into a closed output") << "\"$0\" --help >&-" << noOutput;
    }

    void unusableStandardStreamsAreErrors()
    {
        QFETCH(QString, shell);
        QFETCH(QByteArray, reason);
        QProcess process;
        process.start(QStringLiteral("/bin/sh"),
                      {QStringLiteral("-c"), shell, QStringLiteral(IMG_TOOL_PATH)});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        const QByteArray err = process.readAllStandardError();
        QCOMPARE(process.exitCode(), 1);
        QVERIFY2(isOneLine(err) && err.contains(reason), err.constData());
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
    }

    // Numbers too large for the file's values say so, instead of "not a number".
    void outOfRangeNumbersSaySo_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("1e308 is out of range")
            << QStringList{"1e308", "1", "1", "1", "1", "1"}
            << QByteArray("LEFT is out of range: \"1e308\"");
        QTest::newRow("1e999 is out of range")
            << QStringList{"1", "1", "1", "1", "-1e999", "1"}
            << QByteArray("TRANSPARENCY is out of range: \"-1e999\"");
        QTest::newRow("a layer beyond an int is out of range")
            << QStringList{"1", "1", "1", "1", "1", "99999999999"}
            << QByteArray("LAYER is out of range: \"99999999999\"");
        QTest::newRow("a word is still not a number")
            << QStringList{"1", "ten", "1", "1", "1", "1"}
            << QByteArray("TOP is not a number: \"ten\"");
        QTest::newRow("1e38 still fits") << QStringList{"1e38", "1", "1", "1", "1", "1"}
                                         << QByteArray();
    }

    void outOfRangeNumbersSaySo()
    {
        QFETCH(QStringList, values);
        QFETCH(QByteArray, message);
        const Result r = ToolRun::run(QStringList{"position", "write", "-"} + values);
        QVERIFY(!r.crashed);
        if (message.isEmpty()) {
            QCOMPARE(r.exitCode, 0);
            return;
        }
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(isOneLine(r.err) && r.err.contains(message), r.err.constData());
    }

    // A file that cannot be written says why, in the system's words.
    void failedWriteNamesTheSystemsReason()
    {
        const QString path = m_dir.filePath(QStringLiteral("no-such-folder/settings.dat"));
        const Result r =
            ToolRun::run({"position", "write", path, "1", "2", "3", "4", "5", "6"});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(isOneLine(r.err) &&
                     r.err.contains("could not write " + path.toUtf8() + ": No such file or directory"),
                 r.err.constData());
        QCOMPARE(r.out, QByteArray());
    }

    // A byte-order mark at the start of a text survives the round trip through the filters.
    void byteOrderMarkSurvivesScrambleAndUnscramble()
    {
        const QByteArray text("\xEF\xBB\xBFvar bookPlugin = 1;\n");
        Setup setup;
        setup.input = text;
        const Result scrambled = ToolRun::run({"scramble"}, setup);
        QCOMPARE(scrambled.exitCode, 0);
        setup.input = scrambled.out;
        const Result restored = ToolRun::run({"unscramble"}, setup);
        QCOMPARE(restored.exitCode, 0);
        QCOMPARE(restored.out, text);
    }

    // ---- the manual page

    // The build writes the manual page from the --help texts: each of them stands in it whole,
    // set as roff reads it back ("\\" as "\\e", "-" as "\\-").
    void manualPageHoldsEveryHelp_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("the overview") << QStringList{"--help"};
        for (const QString &name : commandNames)
            QTest::addRow("the help of %s", qPrintable(name))
                << words(name) + QStringList{"--help"};
    }

    void manualPageHoldsEveryHelp()
    {
        QFETCH(QStringList, args);
        const QByteArray page = readBytes(QStringLiteral(IMG_MAN_PAGE));
        QVERIFY2(page.startsWith(".TH IMGBUNDLE 1 \"" IMG_RELEASE_DATE "\" \"imgbundle " IMG_VERSION
                                 "\""),
                 page.left(80).constData());
        QByteArray help = ToolRun::run(args).out;
        QVERIFY(!help.isEmpty());
        help.replace("\\", "\\e").replace("-", "\\-");
        QVERIFY2(page.contains(".nf\n" + help + ".fi\n"), help.constData());
    }

    // The sections a reader of manual pages looks for, in the usual order, and a synopsis line
    // for every command.
    void manualPageHasTheUsualSectionsInOrder()
    {
        const QByteArray page = readBytes(QStringLiteral(IMG_MAN_PAGE));
        qsizetype at = 0;
        for (const char *section :
             {".SH NAME\n", ".SH SYNOPSIS\n", ".SH DESCRIPTION\n", ".SH COMMANDS\n",
              ".SH EXIT STATUS\n", ".SH FILES\n", ".SH ENVIRONMENT\n", ".SH EXAMPLES\n",
              ".SH SEE ALSO\n"}) {
            const qsizetype found = page.indexOf(section, at);
            QVERIFY2(found >= at, section);
            at = found;
        }
        const QByteArray synopsis =
            page.mid(page.indexOf(".SH SYNOPSIS\n"),
                     page.indexOf(".SH DESCRIPTION\n") - page.indexOf(".SH SYNOPSIS\n"));
        for (const QString &name : commandNames)
            QVERIFY2(synopsis.contains(".B imgbundle\n" + name.toUtf8()), qPrintable(name));
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
