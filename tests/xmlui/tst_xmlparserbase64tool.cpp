#include "xmlparserbase64tool.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QtTest>

class tst_XMLParserBase64Tool : public QObject
{
    Q_OBJECT

private slots:
    void knownVectors_data();
    void knownVectors();
    void roundTrip();
    void formattedLines();
    void decodeErrors_data();
    void decodeErrors();
    void decodeIntoBuffer();
    void bufferReuse();
};

void tst_XMLParserBase64Tool::knownVectors_data()
{
    QTest::addColumn<QByteArray>("raw");
    QTest::addColumn<QByteArray>("encoded");
    QTest::newRow("empty") << QByteArray() << QByteArray();
    QTest::newRow("f") << QByteArray("f") << QByteArray("Zg==");
    QTest::newRow("fo") << QByteArray("fo") << QByteArray("Zm8=");
    QTest::newRow("foo") << QByteArray("foo") << QByteArray("Zm9v");
    QTest::newRow("foob") << QByteArray("foob") << QByteArray("Zm9vYg==");
    QTest::newRow("fooba") << QByteArray("fooba") << QByteArray("Zm9vYmE=");
    QTest::newRow("foobar") << QByteArray("foobar") << QByteArray("Zm9vYmFy");
    QTest::newRow("high bytes") << QByteArray("\xff\xfe\x00\x80", 4) << QByteArray("//4AgA==");
}

void tst_XMLParserBase64Tool::knownVectors()
{
    QFETCH(QByteArray, raw);
    QFETCH(QByteArray, encoded);
    XMLParserBase64Tool tool;
    const char *e = tool.encode(reinterpret_cast<unsigned char *>(raw.data()), raw.size());
    QCOMPARE(QByteArray(e), encoded);
    QCOMPARE(XMLParserBase64Tool::encodeLength(raw.size()), encoded.size());

    XMLError error = eXMLErrorEmpty;
    QCOMPARE(int(XMLParserBase64Tool::decodeSize(encoded.constData(), &error)), raw.size());
    QCOMPARE(int(error), 0);
    int length = -1;
    const unsigned char *d = tool.decode(encoded.constData(), &length, &error);
    QCOMPARE(int(error), 0);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(d), length), raw);
}

void tst_XMLParserBase64Tool::roundTrip()
{
    QRandomGenerator rng(7);
    XMLParserBase64Tool tool;
    for (int len = 0; len < 300; ++len) {
        QByteArray raw(len, Qt::Uninitialized);
        for (char &c : raw)
            c = char(rng.bounded(256u));
        for (char formatted : {0, 1}) {
            const QByteArray e(tool.encode(reinterpret_cast<unsigned char *>(raw.data()), raw.size(), formatted));
            QCOMPARE(e.size(), XMLParserBase64Tool::encodeLength(len, formatted));
            XMLError error;
            int n = -1;
            const unsigned char *d = tool.decode(e.constData(), &n, &error);
            QCOMPARE(int(error), 0);
            QCOMPARE(QByteArray(reinterpret_cast<const char *>(d), n), raw);
        }
    }
}

void tst_XMLParserBase64Tool::formattedLines()
{
    XMLParserBase64Tool tool;
    QByteArray raw(200, 'x');
    const QByteArray e(tool.encode(reinterpret_cast<unsigned char *>(raw.data()), raw.size(), 1));
    const QList<QByteArray> lines = e.split('\n');
    QCOMPARE(lines.size(), 4); // 268 characters: 72 + 72 + 72 + 52
    for (int i = 0; i < 3; ++i)
        QCOMPARE(lines.at(i).size(), 72);
    QCOMPARE(lines.last().size(), 52);
    // Exactly 72 characters: no trailing line break.
    QByteArray raw54(54, 'y');
    QVERIFY(!QByteArray(tool.encode(reinterpret_cast<unsigned char *>(raw54.data()), 54, 1)).contains('\n'));
}

void tst_XMLParserBase64Tool::decodeErrors_data()
{
    QTest::addColumn<QByteArray>("encoded");
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("decoded");

    QTest::newRow("spaces and breaks") << QByteArray(" Zm9v\r\n YmFy \t") << 0 << QByteArray("foobar");
    QTest::newRow("missing padding") << QByteArray("Zm9vYg") << 17 << QByteArray("foob");
    QTest::newRow("missing one pad") << QByteArray("Zm9vYmE") << 17 << QByteArray("fooba");
    QTest::newRow("too much padding") << QByteArray("Zm9v=") << 17 << QByteArray("foo");
    QTest::newRow("single trailing char") << QByteArray("Zm9vY") << 19 << QByteArray("foo");
    QTest::newRow("single char") << QByteArray("Z") << 19 << QByteArray();
    QTest::newRow("illegal character") << QByteArray("Zm9v!mFy") << 18 << QByteArray();
    QTest::newRow("data after padding") << QByteArray("Zg==Zg==") << 18 << QByteArray();
    QTest::newRow("three pads") << QByteArray("Zg===") << 18 << QByteArray();
    QTest::newRow("url-safe alphabet") << QByteArray("_-8=") << 18 << QByteArray();
}

void tst_XMLParserBase64Tool::decodeErrors()
{
    QFETCH(QByteArray, encoded);
    QFETCH(int, error);
    QFETCH(QByteArray, decoded);

    XMLError e = eXMLErrorNone;
    const unsigned size = XMLParserBase64Tool::decodeSize(encoded.constData(), &e);
    QCOMPARE(int(e), error);
    QCOMPARE(int(size), decoded.size());

    XMLParserBase64Tool tool;
    int n = -1;
    const unsigned char *d = tool.decode(encoded.constData(), &n, &e);
    QCOMPARE(int(e), error);
    if (error == eXMLErrorBase64DecodeIllegalCharacter) {
        QVERIFY(!d);
        QCOMPARE(n, 0);
    } else {
        QCOMPARE(QByteArray(reinterpret_cast<const char *>(d), n), decoded);
    }
}

void tst_XMLParserBase64Tool::decodeIntoBuffer()
{
    unsigned char out[6];
    std::memset(out, '#', sizeof out);
    XMLError e;
    QCOMPARE(XMLParserBase64Tool::decode("Zm9vYmFy", out, 5, &e), (unsigned char)0);
    QCOMPARE(int(e), int(eXMLErrorBase64DecodeBufferTooSmall));
    QCOMPARE(QByteArray(reinterpret_cast<char *>(out), 6), QByteArray("######"));
    QCOMPARE(XMLParserBase64Tool::decode("Zm9vYmFy", out, 6, &e), (unsigned char)1);
    QCOMPARE(int(e), 0);
    QCOMPARE(QByteArray(reinterpret_cast<char *>(out), 6), QByteArray("foobar"));
    QCOMPARE(XMLParserBase64Tool::decode("Zm9vYg", out, 6, &e), (unsigned char)1);
    QCOMPARE(int(e), int(eXMLErrorBase64DataSizeIsNotMultipleOf4));
    QCOMPARE(XMLParserBase64Tool::decode("Zm*v", out, 6, &e), (unsigned char)0);
    QCOMPARE(int(e), int(eXMLErrorBase64DecodeIllegalCharacter));
    QCOMPARE(XMLParserBase64Tool::decode(nullptr, out, 6, &e), (unsigned char)0);
}

void tst_XMLParserBase64Tool::bufferReuse()
{
    XMLParserBase64Tool tool;
    void *small = tool.alloc(16);
    QVERIFY(small);
    QCOMPARE(tool.alloc(8), small); // big enough already
    auto *big = static_cast<char *>(tool.alloc(1 << 20));
    big[(1 << 20) - 1] = 'x'; // all of it is usable
    tool.freeBuffer();
    tool.freeBuffer();
    QCOMPARE(QByteArray(tool.encode(reinterpret_cast<unsigned char *>(const_cast<char *>("hi")), 2)),
             QByteArray("aGk="));
}

QTEST_APPLESS_MAIN(tst_XMLParserBase64Tool)
#include "tst_xmlparserbase64tool.moc"
