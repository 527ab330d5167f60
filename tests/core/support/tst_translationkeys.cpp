// SPDX-FileCopyrightText: 2026 The image plugin authors
// SPDX-License-Identifier: BSD-3-Clause

// The keys the code looks up in the strings table against the tables themselves. Every key is
// marked where it is written, QT_TRANSLATE_NOOP("PluginLocale", "..."), so that lupdate sees it
// and this test can find it; every marked key has an entry in the table of every language the
// bundle ships; and no lookup takes a literal key that is not marked, which would slip past both.

#include "testenv.h"

#include <QDirIterator>
#include <QFile>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

const QString kSourceDir = QStringLiteral(IMG_SOURCE_DIR);
const QStringList kLanguages{"en", "de", "fr", "ja", "zh_CN"};
const QString kContext = QStringLiteral("PluginLocale");
const QString kMark = QStringLiteral("QT_TRANSLATE_NOOP");

// The functions that look a key up in the strings table, and which of their arguments is the
// key; -1 where every argument is one (the alerts' message and text).
struct Lookup
{
    const char *name;
    int keyArgument;
};
const Lookup kLookups[] = {
    {"loadAppString", 0},
    {"localised", -1},
    {"tell", -1},
    {"alert", -1},
};

struct Token
{
    enum Kind { Word, String, Punctuation };
    Kind kind;
    QString text; // a string's value, escapes resolved and adjacent pieces not yet joined
    int line;
};

bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool isStringPrefix(const QString &word)
{
    static const QStringList prefixes{"L", "u", "U", "u8", "R", "LR", "uR", "UR", "u8R"};
    return prefixes.contains(word);
}

// The C++ tokens of a source file, without comments. Character literals are dropped; strings
// keep their value. Enough of the language for finding calls and their literal arguments.
class Tokenizer
{
public:
    explicit Tokenizer(const QString &code)
        : m_code(code)
    {}

    QList<Token> tokens()
    {
        QList<Token> out;
        while (m_at < m_code.size()) {
            const QChar c = m_code.at(m_at);
            if (c == QLatin1Char('\n')) {
                ++m_line;
                ++m_at;
            } else if (c.isSpace()) {
                ++m_at;
            } else if (startsWith("//")) {
                while (m_at < m_code.size() && m_code.at(m_at) != QLatin1Char('\n'))
                    ++m_at;
            } else if (startsWith("/*")) {
                m_at += 2;
                while (m_at < m_code.size() && !startsWith("*/"))
                    advance();
                m_at += 2;
            } else if (isWordChar(c)) {
                const bool number = c.isDigit();
                const int start = m_at;
                // A number may hold digit separators (1'000) and a decimal point.
                while (m_at < m_code.size() &&
                       (isWordChar(m_code.at(m_at)) ||
                        (number && m_code.at(m_at) == QLatin1Char('.')) ||
                        (number && m_code.at(m_at) == QLatin1Char('\'') &&
                         m_at + 1 < m_code.size() && isWordChar(m_code.at(m_at + 1)))))
                    ++m_at;
                const QString word = m_code.mid(start, m_at - start);
                const QChar next = m_at < m_code.size() ? m_code.at(m_at) : QChar();
                if (!number && next == QLatin1Char('"') && isStringPrefix(word)) {
                    const int line = m_line;
                    out.append({Token::String,
                                word.endsWith(QLatin1Char('R')) ? rawString() : string(), line});
                } else if (!number && next == QLatin1Char('\'') && isStringPrefix(word)) {
                    character();
                } else {
                    out.append({Token::Word, word, m_line});
                }
            } else if (c == QLatin1Char('"')) {
                const int line = m_line;
                out.append({Token::String, string(), line});
            } else if (c == QLatin1Char('\'')) {
                character();
            } else if (startsWith("::")) {
                out.append({Token::Punctuation, QStringLiteral("::"), m_line});
                m_at += 2;
            } else {
                out.append({Token::Punctuation, QString(c), m_line});
                ++m_at;
            }
        }
        return out;
    }

private:
    bool startsWith(const char *text) const
    {
        return QStringView(m_code).mid(m_at).startsWith(QLatin1String(text));
    }

    void advance()
    {
        if (m_code.at(m_at) == QLatin1Char('\n'))
            ++m_line;
        ++m_at;
    }

    // At the opening quote of an ordinary string: its value.
    QString string()
    {
        QString value;
        ++m_at;
        while (m_at < m_code.size() && m_code.at(m_at) != QLatin1Char('"')) {
            if (m_code.at(m_at) == QLatin1Char('\\') && m_at + 1 < m_code.size()) {
                ++m_at;
                value += escape();
            } else {
                value += m_code.at(m_at);
                advance();
            }
        }
        ++m_at;
        return value;
    }

    // Just after a backslash: the character the escape stands for.
    QString escape()
    {
        const QChar c = m_code.at(m_at++);
        switch (c.unicode()) {
        case 'n':
            return QStringLiteral("\n");
        case 't':
            return QStringLiteral("\t");
        case 'r':
            return QStringLiteral("\r");
        case 'a':
            return QStringLiteral("\a");
        case 'b':
            return QStringLiteral("\b");
        case 'f':
            return QStringLiteral("\f");
        case 'v':
            return QStringLiteral("\v");
        case 'x':
            return number(16, -1);
        case 'u':
            return number(16, 4);
        case 'U':
            return number(16, 8);
        case '\n':
            ++m_line; // a line continuation
            return QString();
        default:
            if (c >= QLatin1Char('0') && c <= QLatin1Char('7')) {
                --m_at;
                return number(8, 3);
            }
            return QString(c); // \\ \" \' \?
        }
    }

    // The code point written in base with at most maxDigits digits (-1: as many as there are).
    QString number(int base, int maxDigits)
    {
        char32_t code = 0;
        for (int digits = 0; m_at < m_code.size() && digits != maxDigits; ++digits) {
            const int value = digitValue(m_code.at(m_at));
            if (value < 0 || value >= base)
                break;
            code = code * char32_t(base) + char32_t(value);
            ++m_at;
        }
        return QString::fromUcs4(&code, 1);
    }

    static int digitValue(QChar c)
    {
        if (c.isDigit())
            return c.digitValue();
        const char16_t lower = c.toLower().unicode();
        return lower >= u'a' && lower <= u'f' ? int(lower - u'a') + 10 : -1;
    }

    // At the opening quote of a raw string, R"delimiter(...)delimiter": its value.
    QString rawString()
    {
        ++m_at;
        const int open = int(m_code.indexOf(QLatin1Char('('), m_at));
        const QString close = QLatin1Char(')') + m_code.mid(m_at, open - m_at) + QLatin1Char('"');
        const int end = open < 0 ? -1 : int(m_code.indexOf(close, open));
        if (end < 0) { // not C++ after all: the rest of the file is taken for the string
            const QString rest = m_code.mid(m_at);
            m_at = int(m_code.size());
            return rest;
        }
        const QString value = m_code.mid(open + 1, end - open - 1);
        m_line += int(value.count(QLatin1Char('\n')));
        m_at = end + int(close.size());
        return value;
    }

    // At the opening quote of a character literal: passes over it.
    void character()
    {
        ++m_at;
        while (m_at < m_code.size() && m_code.at(m_at) != QLatin1Char('\'')) {
            if (m_code.at(m_at) == QLatin1Char('\\'))
                ++m_at;
            advance();
        }
        ++m_at;
    }

    const QString m_code;
    int m_at = 0;
    int m_line = 1;
};

// The index of the bracket that closes the one at open, or the end of the tokens.
int closing(const QList<Token> &tokens, int open)
{
    int depth = 0;
    for (int i = open; i < tokens.size(); ++i) {
        if (tokens.at(i).kind != Token::Punctuation)
            continue;
        const QString &p = tokens.at(i).text;
        if (p == "(" || p == "[" || p == "{")
            ++depth;
        else if ((p == ")" || p == "]" || p == "}") && --depth == 0)
            return i;
    }
    return int(tokens.size());
}

bool isOpening(const QList<Token> &tokens, int i)
{
    return i < tokens.size() && tokens.at(i).kind == Token::Punctuation && tokens.at(i).text == "(";
}

// Adjacent string pieces from i on, joined as the compiler joins them; i ends after the last.
// Null when there is no string at i.
QString joinedString(const QList<Token> &tokens, int &i)
{
    if (i >= tokens.size() || tokens.at(i).kind != Token::String)
        return QString();
    QString value = QLatin1String("");
    while (i < tokens.size() && tokens.at(i).kind == Token::String)
        value += tokens.at(i++).text;
    return value;
}

struct Scan
{
    QMap<QString, QStringList> keys; // marked key -> where it is written ("src/x.cpp:12")
    QStringList unmarked;            // lookups of a literal key that is not marked, and bad marks
};

void scanFile(const QString &path, const QString &name, Scan &scan)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        scan.unmarked << name + ": cannot be read";
        return;
    }
    const QList<Token> tokens = Tokenizer(QString::fromUtf8(file.readAll())).tokens();
    const auto where = [&name](const Token &token) {
        return name + QLatin1Char(':') + QString::number(token.line);
    };
    for (int i = 0; i < tokens.size(); ++i) {
        const Token &token = tokens.at(i);
        if (token.kind != Token::Word || !isOpening(tokens, i + 1))
            continue;
        if (token.text == kMark) {
            int at = i + 2;
            const QString context = joinedString(tokens, at);
            const bool comma = at < tokens.size() && tokens.at(at).text == ",";
            ++at;
            const QString key = joinedString(tokens, at);
            if (context.isNull() || !comma || key.isNull() || at >= tokens.size() ||
                tokens.at(at).text != ")") {
                scan.unmarked << where(token) + ": " + kMark + " without a literal context and key";
            } else if (context == kContext) {
                scan.keys[key] << where(token);
            }
            continue;
        }
        const auto lookup =
            std::find_if(std::begin(kLookups), std::end(kLookups),
                         [&token](const Lookup &l) { return token.text == l.name; });
        if (lookup == std::end(kLookups))
            continue;
        // The arguments, split at the commas of this call's own level. A literal anywhere in a
        // key argument, as in QStringLiteral("..."), must sit inside a mark.
        const int end = closing(tokens, i + 1);
        int argument = 0;
        int depth = 0;
        for (int at = i + 2; at < end; ++at) {
            const Token &t = tokens.at(at);
            if (t.kind == Token::Word && t.text == kMark && isOpening(tokens, at + 1)) {
                at = closing(tokens, at + 1);
            } else if (t.kind == Token::Punctuation) {
                if (t.text == "(" || t.text == "[" || t.text == "{")
                    ++depth;
                else if (t.text == ")" || t.text == "]" || t.text == "}")
                    --depth;
                else if (t.text == "," && depth == 0)
                    ++argument;
            } else if (t.kind == Token::String) {
                int next = at;
                const QString value = joinedString(tokens, next);
                if (lookup->keyArgument < 0 || lookup->keyArgument == argument)
                    scan.unmarked << where(t) + ": " + token.text + "(\"" + value +
                                         "\") is not marked";
                at = next - 1;
            }
        }
    }
}

} // namespace

class TestTranslationKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyLiteralKeyIsMarked();
    void everyKeyIsInEveryTable_data();
    void everyKeyIsInEveryTable();

private:
    Scan m_scan;
    QMap<QString, QSet<QString>> m_tables; // language -> keys with a text
};

// The keys of the strings table in a translation file that reach the compiled table: an entry
// left empty or dropped from the code (vanished, obsolete) does not, and one with a
// disambiguating comment is not what a lookup by key alone finds.
QSet<QString> tableKeys(const QString &path)
{
    QSet<QString> keys;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return keys;
    QXmlStreamReader xml(&file);
    QString context, source, translation, type;
    bool comment = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const QStringView element = xml.name();
            if (element == u"name") {
                context = xml.readElementText();
            } else if (element == u"message") {
                source.clear();
                translation.clear();
                type.clear();
                comment = false;
            } else if (element == u"source") {
                source = xml.readElementText();
            } else if (element == u"comment") {
                comment = !xml.readElementText().isEmpty();
            } else if (element == u"translation") {
                type = xml.attributes().value(QLatin1String("type")).toString();
                translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
            }
        } else if (xml.isEndElement() && xml.name() == u"message") {
            if (context == kContext && !translation.isEmpty() && !comment &&
                type != QLatin1String("vanished") && type != QLatin1String("obsolete"))
                keys.insert(source);
        }
    }
    if (xml.hasError())
        qWarning() << path << "is not well-formed:" << xml.errorString();
    return keys;
}

void TestTranslationKeys::initTestCase()
{
    TestEnv::isolate();
    const QDir source(kSourceDir);
    QDirIterator it(source.filePath("src"), {"*.cpp", "*.h"}, QDir::Files,
                    QDirIterator::Subdirectories);
    QStringList files;
    while (it.hasNext())
        files << it.next();
    files.sort();
    QVERIFY(!files.isEmpty());
    for (const QString &path : std::as_const(files))
        scanFile(path, source.relativeFilePath(path), m_scan);
    // The scan reads the marks, not a copy of the table: a scan that finds none has gone wrong.
    QVERIFY2(m_scan.keys.size() >= 40, qPrintable(QString::number(m_scan.keys.size())));
    for (const QString &lang : kLanguages) {
        const QString path = source.filePath("resources/translations/" + lang + ".ts");
        m_tables[lang] = tableKeys(path);
        QVERIFY2(!m_tables[lang].isEmpty(), qPrintable(path + " has no " + kContext + " entries"));
    }
}

void TestTranslationKeys::everyLiteralKeyIsMarked()
{
    // One line each, as a long failure message would be cut short.
    for (const QString &problem : std::as_const(m_scan.unmarked))
        qWarning().noquote() << problem;
    QVERIFY2(m_scan.unmarked.isEmpty(),
             qPrintable(QString::number(m_scan.unmarked.size()) +
                        " lookup(s) of a literal key without QT_TRANSLATE_NOOP(\"" + kContext +
                        "\", ...), listed above"));
}

void TestTranslationKeys::everyKeyIsInEveryTable_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("places");
    for (auto it = m_scan.keys.cbegin(); it != m_scan.keys.cend(); ++it)
        QTest::newRow(it.key().toUtf8().constData()) << it.key() << it.value();
}

void TestTranslationKeys::everyKeyIsInEveryTable()
{
    QFETCH(QString, key);
    QFETCH(QStringList, places);
    QStringList missing;
    for (const QString &lang : kLanguages) {
        if (!m_tables.value(lang).contains(key))
            missing << lang;
    }
    QVERIFY2(missing.isEmpty(), qPrintable("\"" + key + "\" (" + places.join(", ") +
                                           ") has no text in " + missing.join(", ")));
}

QTEST_GUILESS_MAIN(TestTranslationKeys)
#include "tst_translationkeys.moc"
