// The defaults the library sets up when it is loaded, before main() runs.

#include "zstartup_p.h"
#include "xmlnode.h"

#include <QApplication>
#include <QFileInfo>
#include <QFont>
#include <QtTest>

class tst_ZStartup : public QObject
{
    Q_OBJECT

private slots:
    // The library's font survives the creation of the application object.
    void defaultFont()
    {
        const QFont font = QApplication::font();
        QCOMPARE(font.family(), QStringLiteral("SimSun"));
        QCOMPARE(font.pixelSize(), 12);
    }

    void environment()
    {
        QCOMPARE(qgetenv("QT_ANCHORLAYOUT_NO_SIMPLIFICATION"), QByteArray("1"));
        const QString appdir = QString::fromLocal8Bit(qgetenv("appdir"));
        QVERIFY(!appdir.isEmpty());
        QCOMPARE(QFileInfo(appdir).canonicalFilePath(),
                 QFileInfo(QCoreApplication::applicationDirPath()).canonicalFilePath());
    }

    // The parser runs with UTF-8, dropped white space and comments that do
    // not split text: a document relying on all three reads back as one text.
    void parserOptions()
    {
        XMLResults results;
        XMLNode root = XMLNode::parseString(
            "<a>  caf\xc3\xa9 <!-- note --> &#233;t\xc3\xa9  </a>", "a", &results);
        QCOMPARE(int(results.error), int(eXMLErrorNone));
        QCOMPARE(root.nText(), 1);
        const QString text = QString::fromUtf8(root.getText());
        QVERIFY2(text.startsWith(QString::fromUtf8("caf\xc3\xa9")), qPrintable(text));
        QVERIFY2(text.endsWith(QString::fromUtf8("\xc3\xa9t\xc3\xa9")), qPrintable(text));
    }
};

QTEST_MAIN(tst_ZStartup)
#include "tst_zstartup.moc"
