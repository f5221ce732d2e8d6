#include "xmlparserbase64tool.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QtTest>

namespace {

unsigned char *bytes(QByteArray &data)
{
    return reinterpret_cast<unsigned char *>(data.data());
}

QByteArray text(const unsigned char *data, int length)
{
    return QByteArray(reinterpret_cast<const char *>(data), length);
}

} // namespace

class tst_XMLParserBase64Tool : public QObject
{
    Q_OBJECT

private slots:
    void decode_data();
    void decode();
    void roundTrip();
    void decodeIntoBuffer();
};

void tst_XMLParserBase64Tool::decode_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("decoded");

    QTest::newRow("empty") << QByteArray() << 0 << QByteArray();
    QTest::newRow("f") << QByteArray("Zg==") << 0 << QByteArray("f");
    QTest::newRow("fo") << QByteArray("Zm8=") << 0 << QByteArray("fo");
    QTest::newRow("foo") << QByteArray("Zm9v") << 0 << QByteArray("foo");
    QTest::newRow("foob") << QByteArray("Zm9vYg==") << 0 << QByteArray("foob");
    QTest::newRow("foobar") << QByteArray("Zm9vYmFy") << 0 << QByteArray("foobar");
    QTest::newRow("high bytes") << QByteArray("//4AgA==") << 0 << QByteArray("\xff\xfe\x00\x80", 4);
    QTest::newRow("spaces and breaks") << QByteArray(" Zm9v\r\n YmFy \t") << 0 << QByteArray("foobar");
    // Warnings: the data that is there is decoded.
    QTest::newRow("missing padding") << QByteArray("Zm9vYg") << 17 << QByteArray("foob");
    QTest::newRow("missing one pad") << QByteArray("Zm9vYmE") << 17 << QByteArray("fooba");
    QTest::newRow("too much padding") << QByteArray("Zm9v=") << 17 << QByteArray("foo");
    QTest::newRow("single trailing char") << QByteArray("Zm9vY") << 19 << QByteArray("foo");
    QTest::newRow("single char") << QByteArray("Z") << 19 << QByteArray();
    // Errors: nothing is decoded.
    QTest::newRow("illegal character") << QByteArray("Zm9v!mFy") << 18 << QByteArray();
    QTest::newRow("data after padding") << QByteArray("Zg==Zg==") << 18 << QByteArray();
    QTest::newRow("three pads") << QByteArray("Zg===") << 18 << QByteArray();
    QTest::newRow("url-safe alphabet") << QByteArray("_-8=") << 18 << QByteArray();
}

void tst_XMLParserBase64Tool::decode()
{
    QFETCH(QByteArray, encoded);
    QFETCH(int, error);
    QFETCH(QByteArray, decoded);

    XMLError e = eXMLErrorEmpty;
    QCOMPARE(int(XMLParserBase64Tool::decodeSize(encoded.constData(), &e)), decoded.size());
    QCOMPARE(int(e), error);
    XMLParserBase64Tool tool;
    int n = -1;
    const unsigned char *d = tool.decode(encoded.constData(), &n, &e);
    QCOMPARE(int(e), error);
    QCOMPARE(text(d, n), decoded);
    if (error == eXMLErrorBase64DecodeIllegalCharacter)
        QVERIFY(!d);
    // Clean input is what the encoder writes for the bytes.
    if (error == eXMLErrorNone) {
        const QByteArray canonical = encoded.simplified().replace(' ', QByteArray());
        QCOMPARE(QByteArray(tool.encode(bytes(decoded), decoded.size())), canonical);
        QCOMPARE(XMLParserBase64Tool::encodeLength(decoded.size()), canonical.size());
    }
}

void tst_XMLParserBase64Tool::roundTrip()
{
    // Every length class and both layouts; formatted output breaks lines
    // after 72 characters and never ends with a break.
    QRandomGenerator rng(7);
    XMLParserBase64Tool tool;
    for (int len = 0; len < 300; ++len) {
        QByteArray raw(len, Qt::Uninitialized);
        for (char &c : raw)
            c = char(rng.bounded(256u));
        const int chars = (len + 2) / 3 * 4;
        for (char formatted : {0, 1}) {
            const QByteArray e(tool.encode(bytes(raw), raw.size(), formatted));
            QCOMPARE(e.size(), XMLParserBase64Tool::encodeLength(len, formatted));
            const QList<QByteArray> lines = e.split('\n');
            QCOMPARE(lines.size(), formatted && chars > 72 ? (chars + 71) / 72 : 1);
            for (int i = 0; i + 1 < lines.size(); ++i)
                QCOMPARE(lines.at(i).size(), 72);
            QCOMPARE(e.size() - lines.size() + 1, chars);
            XMLError error = eXMLErrorEmpty;
            int n = -1;
            const unsigned char *d = tool.decode(e.constData(), &n, &error);
            QCOMPARE(int(error), 0);
            QCOMPARE(text(d, n), raw);
        }
    }
}

void tst_XMLParserBase64Tool::decodeIntoBuffer()
{
    unsigned char out[6];
    std::memset(out, '#', sizeof out);
    XMLError e;
    // Too small: an error, and not one byte written.
    QCOMPARE(XMLParserBase64Tool::decode("Zm9vYmFy", out, 5, &e), (unsigned char)0);
    QCOMPARE(int(e), int(eXMLErrorBase64DecodeBufferTooSmall));
    QCOMPARE(text(out, 6), QByteArray("######"));
    QCOMPARE(XMLParserBase64Tool::decode("Zm9vYmFy", out, 6, &e), (unsigned char)1);
    QCOMPARE(int(e), 0);
    QCOMPARE(text(out, 6), QByteArray("foobar"));
    QCOMPARE(XMLParserBase64Tool::decode("Zm9vYg", out, 6, &e), (unsigned char)1);
    QCOMPARE(int(e), int(eXMLErrorBase64DataSizeIsNotMultipleOf4));
    QCOMPARE(XMLParserBase64Tool::decode("Zm*v", out, 6, &e), (unsigned char)0);
    QCOMPARE(int(e), int(eXMLErrorBase64DecodeIllegalCharacter));
    QCOMPARE(XMLParserBase64Tool::decode(nullptr, out, 6, &e), (unsigned char)0);
}

QTEST_APPLESS_MAIN(tst_XMLParserBase64Tool)
#include "tst_xmlparserbase64tool.moc"
