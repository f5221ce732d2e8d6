#include "xmlnode.h"
#include "zcreator.h"
#include "zhelper.h"
#include "zpropertyconverter.h"
#include "zresource.h"
#include "zspacer.h"
#include "ztheme.h"
#include "zwidget.h"
#include "zwindow.h"
#include "zxmlui.h"

#include <QGraphicsLinearLayout>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

// What the test classes saw, in order.
static QStringList g_log;

// A value type only these tests know, to count conversions.
struct Tag
{
    QString text;
    bool operator==(const Tag &o) const { return text == o.text; }
};
Q_DECLARE_METATYPE(Tag)
static int g_tagConversions = 0;

class Probe : public ZWidget
{
    Q_OBJECT
    Q_PROPERTY(QString note READ note WRITE setNote)
    Q_PROPERTY(Tag tag READ tag WRITE setTag)
    Q_PROPERTY(QColor shade MEMBER shade)
    Q_PROPERTY(QObject *inner READ inner)
    Q_PROPERTY(QObject *nothing READ nothing)
    Q_PROPERTY(int count MEMBER count)
    Q_PROPERTY(double ratio MEMBER ratio)

public:
    Q_INVOKABLE explicit Probe(QGraphicsItem *parent = nullptr) : ZWidget(parent) { g_log << QStringLiteral("create"); }

    QString note() const { return m_note; }
    void setNote(const QString &note)
    {
        m_note = note;
        g_log << QStringLiteral("note %1").arg(note);
    }
    Tag tag() const { return m_tag; }
    void setTag(const Tag &tag) { m_tag = tag; }
    QObject *inner()
    {
        if (!m_inner) {
            m_inner = new ZWidget(this);
            m_inner->setObjectName(QStringLiteral("inner"));
        }
        return m_inner;
    }
    QObject *nothing() const { return nullptr; }

    void addItem(ZWidget *item) override
    {
        g_log << QStringLiteral("add %1").arg(item->objectName().isEmpty() ? QStringLiteral("?") : item->objectName());
        ZWidget::addItem(item);
    }
    void construct() override { g_log << QStringLiteral("construct %1").arg(objectName()); }
    void setData(const XMLNode *node) override
    {
        xmlName = QString::fromUtf8(node->getName());
        xmlValue = QString::fromUtf8(node->getAttribute("value"));
        ++dataCalls;
    }
    void setData(const QVariant &value) override
    {
        variant = value;
        ++dataCalls;
    }

    QString xmlName, xmlValue;
    QVariant variant;
    QColor shade = Qt::red;
    int count = 42;
    double ratio = 4.2;
    int dataCalls = 0;
    QVariantList received;
    int clicks = 0;

public Q_SLOTS:
    void onClicked() { ++clicks; }
    void onValue(int v) { received = {v}; }
    void take(int v) { received = {v}; }
    void take(int a, int b) { received = {a, b}; }
    void takeMany(const QString &s, qreal r, bool b, const QColor &c, uint u) { received = {s, r, b, c, u}; }
    void takeObjects(QObject *o, QWidget *w) { received = {QVariant::fromValue(o), QVariant::fromValue(w)}; }
    void takeVariant(const QVariant &v) { received = {v}; }
    void takeTen(int a, int b, int c, int d, int e, int f, int g, int h, int i, int j)
    {
        received = {a, b, c, d, e, f, g, h, i, j};
    }
    void receiveList(const QVariant &v) { variant = v; }

Q_SIGNALS:
    void clicked();
    void valueChanged(int value);

private:
    QString m_note;
    Tag m_tag;
    ZWidget *m_inner = nullptr;
};

class TestWindow : public ZWindow
{
    Q_OBJECT
    Q_PROPERTY(QObject *titlebar READ titlebar)

public:
    Q_INVOKABLE explicit TestWindow(QWidget *parent = nullptr) : ZWindow(parent), m_titlebar(new ZWidget)
    {
        m_titlebar->setObjectName(QStringLiteral("titlebar"));
        rootWidget()->addItem(m_titlebar);
    }
    QObject *titlebar() const { return m_titlebar; }
    void construct() override
    {
        ++constructed;
        ZWindow::construct();
    }
    int constructed = 0;

private:
    ZWidget *m_titlebar;
};

// Loads a second document from its construct(), as a container might.
class Nester : public ZWidget
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit Nester(QGraphicsItem *parent = nullptr) : ZWidget(parent) {}
    void construct() override { nestedResult = ZXmlUI::widgetFromMemory(s_inner, this); }
    static QByteArray s_inner;
    bool nestedResult = false;
};
QByteArray Nester::s_inner;

Z_REGISTER_WIDGET(Probe);
Z_REGISTER_WIDGET(Nester);
Z_REGISTER_WINDOW(TestWindow);

namespace {

using Diagnostic = ZXmlUI::Diagnostic;

// Collects the diagnostics while alive.
class Diagnostics
{
public:
    Diagnostics() { ZXmlUI::setDiagnosticsSink([this](const Diagnostic &d) { list.append(d); }); }
    ~Diagnostics() { ZXmlUI::setDiagnosticsSink({}); }
    QStringList kinds() const
    {
        QStringList r;
        for (const Diagnostic &d : list)
            r << QLatin1String(ZXmlUI::diagnosticKindName(d.kind));
        return r;
    }
    QString dump() const
    {
        QStringList lines;
        for (const Diagnostic &d : list)
            lines << QStringLiteral("%1 %2:%3:%4 %5")
                         .arg(QLatin1String(ZXmlUI::diagnosticKindName(d.kind)), d.file)
                         .arg(d.line)
                         .arg(d.column)
                         .arg(d.message);
        return lines.join(QLatin1Char('\n'));
    }
    QList<Diagnostic> list;
};

QByteArray tree(const QByteArray &body, const QByteArray &helpers = QByteArray())
{
    return "<uitree>" + body + "</uitree>" + (helpers.isEmpty() ? QByteArray() : "<uihelper>" + helpers + "</uihelper>");
}

template<typename T = Probe>
T *find(QObject *root, const char *name)
{
    if (auto *w = qobject_cast<ZWidget *>(root))
        return qobject_cast<T *>(w->findObject(QLatin1String(name)));
    if (auto *win = qobject_cast<ZWindow *>(root))
        return qobject_cast<T *>(win->rootWidget()->findObject(QLatin1String(name)));
    return nullptr;
}

int depthBelow(ZWidget *top)
{
    int depth = 0;
    for (QGraphicsItem *item = top; item; ++depth) {
        QGraphicsItem *next = nullptr;
        for (QGraphicsItem *child : item->childItems()) {
            if (qobject_cast<ZSpacer *>(child->toGraphicsObject()))
                next = child;
        }
        item = next;
    }
    return depth - 1;
}

QVariant tagConverter(const QString &text, bool *ok)
{
    ++g_tagConversions;
    if (ok)
        *ok = !text.isEmpty();
    return QVariant::fromValue(Tag{text.toUpper()});
}

} // namespace

class tst_ZXmlUI : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { g_log.clear(); }

    // Windows and widget trees.
    void windowFromMemory();
    void creationOrder();
    void documentFaults_data();
    void documentFaults();
    void unknownElementsAreSkipped();
    void fileLoads();

    // Attributes and setPropertyEx.
    void attributes_data();
    void attributes();
    void numbersReadAsQtReadsThem_data();
    void numbersReadAsQtReadsThem();
    void dottedPathOnWindow();
    void setPropertyEx_data();
    void setPropertyEx();

    // Actions and helpers.
    void objectArgumentUsesCurrentName();
    void connectionWords_data();
    void connectionWords();
    void eventFailures();
    void invoke_data();
    void invoke();
    void dataElements();
    void helpers();
    void methodInvoker();

    // Skins.
    void skinApplication();
    void skinValuesAreCached();
    void skinDefinitionRules();

    // Diagnostics and bad input.
    void silentWithoutSink();
    void positions();
    void deepNesting();
    void nestedLoadFromConstruct();
};

void tst_ZXmlUI::windowFromMemory()
{
    Diagnostics diag;
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(tree("<TestWindow objectName='top' sceneMargins='1,2,3,4'>"
                                                             "  <ZSpacer objectName='box' layout='VBox'>"
                                                             "    <Probe objectName='p' fixWidth='60'/>"
                                                             "  </ZSpacer>"
                                                             "</TestWindow><ZWindow objectName='ignored'/>")));
    auto *window = qobject_cast<TestWindow *>(w.get());
    QVERIFY(window);
    QCOMPARE(window->objectName(), QStringLiteral("top"));
    QCOMPARE(window->sceneMargins(), QMargins(1, 2, 3, 4));
    QCOMPARE(window->constructed, 1);
    auto *box = find<ZSpacer>(window, "box");
    auto *probe = find(window, "p");
    QVERIFY(box && probe);
    QCOMPARE(box->parentItem(), window->rootWidget());
    QCOMPARE(probe->parentItem(), box);
    QCOMPARE(probe->parent(), box);
    QCOMPARE(probe->fixWidth(), 60.0);
    // In the box's layout, not only a child item.
    auto *layout = dynamic_cast<QGraphicsLinearLayout *>(box->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0), probe);
    QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));

    // A widget load puts every top element into the target's layout.
    ZWidget target;
    target.setLayoutType(ZWidget::HBox);
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<ZSpacer objectName='one'/><ZSpacer objectName='two'/>"), &target));
    layout = dynamic_cast<QGraphicsLinearLayout *>(target.layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 2);
    QCOMPARE(static_cast<ZWidget *>(layout->itemAt(1))->objectName(), QStringLiteral("two"));
}

void tst_ZXmlUI::creationOrder()
{
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='a' note='A'>"
                                          "  <Probe objectName='b' note='B'><Probe objectName='c' note='C'/></Probe>"
                                          "  <Probe objectName='d' note='D'/>"
                                          "</Probe>"),
                                     &target));
    // Each element joins its parent before its attributes (so the name is
    // unknown to addItem), its children follow, construct() comes last.
    const QStringList expected = {
        QStringLiteral("create"), QStringLiteral("note A"),
        QStringLiteral("create"), QStringLiteral("add ?"), QStringLiteral("note B"),
        QStringLiteral("create"), QStringLiteral("add ?"), QStringLiteral("note C"),
        QStringLiteral("construct c"), QStringLiteral("construct b"),
        QStringLiteral("create"), QStringLiteral("add ?"), QStringLiteral("note D"),
        QStringLiteral("construct d"), QStringLiteral("construct a"),
    };
    QCOMPARE(g_log, expected);
}

void tst_ZXmlUI::documentFaults_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("window"); // else a widget load
    QTest::addColumn<bool>("loads");
    QTest::addColumn<QStringList>("kinds");
    const QStringList missingRoot{QStringLiteral("MissingRoot")};
    const QStringList parseError{QStringLiteral("ParseError")};
    QTest::newRow("no uitree") << QByteArray("<tree><ZWindow/></tree>") << true << false << missingRoot;
    QTest::newRow("uitree nested") << QByteArray("<a><uitree><ZWindow/></uitree></a>") << true << false << missingRoot;
    QTest::newRow("empty uitree") << QByteArray("<uitree/>") << true << false << missingRoot;
    QTest::newRow("does not parse") << QByteArray("<uitree><ZWindow></uitree") << true << false << parseError;
    QTest::newRow("empty text") << QByteArray() << true << false << parseError;
    QTest::newRow("unknown window class") << tree("<NoSuchWindow><Probe/></NoSuchWindow>") << true << false
                                          << QStringList{QStringLiteral("UnknownClass")};
    QTest::newRow("action at top level") << tree("<TestWindow><x:invoke function='close'/><ZSpacer/></TestWindow>")
                                         << true << true << QStringList{QStringLiteral("UnknownClass")};
    QTest::newRow("widgets: no uitree") << QByteArray("<other/>") << false << false << missingRoot;
    QTest::newRow("widgets: empty uitree") << QByteArray("<uitree/>") << false << true << QStringList();
    QTest::newRow("widgets: does not parse") << QByteArray("<uitree><Probe") << false << false << parseError;
}

void tst_ZXmlUI::documentFaults()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, window);
    QFETCH(bool, loads);
    QFETCH(QStringList, kinds);
    Diagnostics diag;
    ZWidget target;
    if (window) {
        std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(text));
        QCOMPARE(bool(w), loads);
    } else {
        QCOMPARE(ZXmlUI::widgetFromMemory(text, &target), loads);
    }
    QCOMPARE(diag.kinds(), kinds);
    if (!loads)
        QCOMPARE(g_log, QStringList()); // nothing was made
}

void tst_ZXmlUI::unknownElementsAreSkipped()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<ZSpacr objectName='gone'><Probe objectName='lost'/><Nope/></ZSpacr>"
                                          "<zspacer objectName='lower'/><ZSpacer objectName='kept'/>"),
                                     &target));
    // Names are case-sensitive; the subtree of an unknown element goes too.
    QVERIFY(!target.findObject(QStringLiteral("gone")) && !target.findObject(QStringLiteral("lower")));
    QVERIFY(!target.findObject(QStringLiteral("lost")));
    QVERIFY(target.findObject(QStringLiteral("kept")));
    QCOMPARE(g_log, QStringList());
    QCOMPARE(diag.kinds(), QStringList(3, QStringLiteral("UnknownClass")));
    QVERIFY(diag.list[0].message.contains(QLatin1String("\"ZSpacr\"")));
    QVERIFY(diag.list[1].message.contains(QLatin1String("\"Nope\"")));
    QVERIFY(diag.list[2].message.contains(QLatin1String("\"zspacer\"")));

    // A class whose creator is gone is no longer known.
    class Local : public ZWidget
    {
    public:
        using ZWidget::ZWidget;
    };
    {
        const ZCreator<Local, ZWidget, QGraphicsItem, ZWidgetCreatorBase> creator("LocalWidget");
        QVERIFY(ZXmlUI::widgetFromMemory(tree("<LocalWidget objectName='first'/>"), &target));
        QVERIFY(target.findObject(QStringLiteral("first")));
    }
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<LocalWidget objectName='second'/>"), &target));
    QVERIFY(!target.findObject(QStringLiteral("second")));
}

void tst_ZXmlUI::fileLoads()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFile f(dir.filePath(QStringLiteral("w.xml")));
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(tree("<TestWindow objectName='fromFile'>\n  <Bogus/>\n</TestWindow>"));
    f.close();
    ZResource::addSearchPath(QStringLiteral("loadertest"), dir.path());

    Diagnostics diag;
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromFile("loadertest:w.xml"));
    QVERIFY(w);
    QCOMPARE(w->objectName(), QStringLiteral("fromFile"));
    QCOMPARE(diag.list.size(), 1);
    QCOMPARE(diag.list[0].file, QStringLiteral("loadertest:w.xml"));
    QCOMPARE(diag.list[0].line, 2);
    QCOMPARE(diag.list[0].column, 3);
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromFile(QStringLiteral("loadertest:w.xml"), &target));

    diag.list.clear();
    QVERIFY(!ZXmlUI::windowFromFile(QStringLiteral("loadertest:missing.xml")));
    QVERIFY(!ZXmlUI::widgetFromFile("loadertest:missing.xml", &target));
    QVERIFY(!ZXmlUI::initSkin("loadertest:missing.xml"));
    // Without a target nothing is read or made.
    QVERIFY(!ZXmlUI::widgetFromFile(QStringLiteral("loadertest:w.xml"), nullptr));
    QVERIFY(!ZXmlUI::widgetFromMemory(tree("<Probe/>"), nullptr));
    QCOMPARE(g_log, QStringList());
    const QString notFound = QStringLiteral("FileNotFound");
    const QString noRoot = QStringLiteral("MissingRoot");
    QCOMPARE(diag.kinds(), (QStringList{notFound, notFound, notFound, noRoot, noRoot}));

    // The library's own message box document, from the resources.
    diag.list.clear();
    std::unique_ptr<ZWindow> box(ZXmlUI::windowFromFile(":/xml/theme/xml/msgbox.xml"));
    QVERIFY(box);
    QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));
}

void tst_ZXmlUI::attributes_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("expected");
    QTest::addColumn<int>("diagnostic");
    const int none = -1, write = Diagnostic::PropertyWriteFailed, conversion = Diagnostic::ConversionFailed,
              path = Diagnostic::UnresolvedPath;
    const struct
    {
        const char *tag, *attribute, *property;
        QVariant expected;
        int diagnostic;
    } rows[] = {
        {"number", "fixHeight='20'", "fixHeight", 20.0, none},
        {"bool", "sizeToChild='true'", "sizeToChild", true, none},
        {"enum key", "layout='HBox'", "layout", QVariant::fromValue(ZWidget::HBox), none},
        {"enum key, other enum", "dragPolicy='WindowMove'", "dragPolicy", QVariant::fromValue(ZWidget::WindowMove), none},
        {"flags", "alignment='AlignLeft|AlignVCenter'", "alignment",
         QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter), none},
        {"margins converter", "margins='1.9,2,3,4'", "margins", QVariant::fromValue(QMargins(1, 2, 3, 4)), none},
        {"colour converter", "backgroundColor='#ff000080'", "backgroundColor", QColor(255, 0, 0, 128), none},
        {"size converter", "fixSize='10,20,30'", "fixSize", QSizeF(10, 20), none},
        {"registered user type", "tag='abc'", "tag", QVariant::fromValue(Tag{QStringLiteral("ABC")}), none},
        {"unknown attribute: dynamic string", "foo='bar'", "foo", QStringLiteral("bar"), none},
        {"attribute without value", "flag", "flag", QString(), none},
        {"bad enum key: unchanged", "layout='Diagonal'", "layout", QVariant::fromValue(ZWidget::None), write},
        {"bad number: unchanged", "fixHeight='tall'", "fixHeight", -1.0, write},
        {"read-only", "width='5'", "width", 0.0, write},
        {"malformed margins: fallback", "margins='1,2,3'", "margins", QVariant::fromValue(QMargins()), conversion},
        {"malformed colour: fallback", "shade='255,0'", "shade", QColor(), conversion},
        {"path through QObject*", "inner.fixHeight='7'", "inner.fixHeight", 7.0, none},
        {"path through null QObject*", "nothing.fixHeight='7'", "fixHeight", -1.0, path},
        {"path through non-object", "margins.left='7'", "left", QVariant(), path},
        {"path through missing property", "titlebar.fixHeight='20'", "fixHeight", -1.0, path},
        {"name ending in a dot", "inner.='7'", "inner.", QVariant(), path},
    };
    for (const auto &r : rows)
        QTest::newRow(r.tag) << QByteArray(r.attribute) << QByteArray(r.property) << r.expected << r.diagnostic;
}

void tst_ZXmlUI::attributes()
{
    QFETCH(QByteArray, attribute);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, expected);
    QFETCH(int, diagnostic);
    QVERIFY(ZPropertyConverter::registerConverter<Tag>("Tag", tagConverter));

    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='p' " + attribute + "/>"), &target));
    auto *probe = find(&target, "p");
    QVERIFY(probe);
    // Read back along the same path, by hand.
    QObject *holder = probe;
    QByteArray name = property;
    const int dot = property.indexOf('.');
    if (dot > 0) {
        holder = probe->property(property.left(dot).constData()).value<QObject *>();
        QVERIFY(holder);
        name = property.mid(dot + 1);
    }
    QCOMPARE(holder->property(name.constData()), expected);
    if (diagnostic < 0) {
        QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));
    } else {
        QCOMPARE(diag.list.size(), 1);
        QCOMPARE(int(diag.list[0].kind), diagnostic);
        QVERIFY2(diag.list[0].message.startsWith(QLatin1String("<Probe> attribute \"")), qPrintable(diag.dump()));
        QCOMPARE(diag.list[0].line, 1);
        QCOMPARE(diag.list[0].column, 9);
    }
}

// Whole numbers are read by the loader itself; every text must still give
// an int or double property what Qt's own conversion of the text gives.
void tst_ZXmlUI::numbersReadAsQtReadsThem_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"96", "-5", "0", "-0", "007", "123456789", "-999999999", "1234567890", "99999999999",
                             " 12", "12 ", "+3", "1e3", "2.5", "", "-", "--1", "12a", "0x10"})
        QTest::newRow(text) << QString::fromLatin1(text);
    QTest::newRow("other digits") << QStringLiteral("\u0663\u0664");
}

void tst_ZXmlUI::numbersReadAsQtReadsThem()
{
    QFETCH(QString, text);
    Probe byQt;
    byQt.setProperty("count", text);
    byQt.setProperty("ratio", text);
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='p' count='" + text.toUtf8() + "' ratio='" + text.toUtf8() + "'/>"),
                                     &target));
    auto *loaded = qobject_cast<Probe *>(find(&target, "p"));
    QVERIFY(loaded);
    QCOMPARE(loaded->count, byQt.count);
    QCOMPARE(loaded->ratio, byQt.ratio);
}

void tst_ZXmlUI::dottedPathOnWindow()
{
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(
        tree("<TestWindow titlebar.fixHeight='20' titlebar.margins='3,1,1,1' titlebar.objectName='tb'/>")));
    QVERIFY(w);
    auto *titlebar = qobject_cast<ZWidget *>(w->property("titlebar").value<QObject *>());
    QCOMPARE(titlebar->fixHeight(), 20.0);
    QCOMPARE(titlebar->margins(), QMargins(3, 1, 1, 1));
    QCOMPARE(titlebar->objectName(), QStringLiteral("tb"));

    // On a window class without the property the attribute does nothing.
    Diagnostics diag;
    std::unique_ptr<ZWindow> plain(ZXmlUI::windowFromMemory(tree("<ZWindow titlebar.fixHeight='20'/>")));
    QVERIFY(plain);
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("UnresolvedPath")});
    QVERIFY(diag.list[0].message.contains(QLatin1String("ZWindow has no property \"titlebar\"")));
}

void tst_ZXmlUI::setPropertyEx_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("value"); // a QByteArray goes in as text
    QTest::addColumn<bool>("result");
    QTest::addColumn<QVariant>("expected"); // read back along the path; invalid: not read
    const struct
    {
        const char *tag, *name;
        QVariant value;
        bool result;
        QVariant expected;
    } rows[] = {
        {"declared", "spacing", QByteArray("4"), true, 4},
        {"converted", "originPoint", QByteArray("3,4"), true, QPointF(3, 4)},
        {"path", "inner.toolTip", QByteArray("hi"), true, QStringLiteral("hi")},
        {"failed write is still true", "spacing", QByteArray("x"), true, 0},
        {"dynamic", "colour", QByteArray("blue"), true, QStringLiteral("blue")},
        {"missing path property", "titlebar.text", QByteArray("x"), false, QVariant()},
        {"null path object", "nothing.text", QByteArray("x"), false, QVariant()},
        {"empty piece", "inner..toolTip", QByteArray("x"), false, QVariant()},
        {"no name", nullptr, QByteArray("5"), false, QVariant()},
        {"value: path", "inner.fixWidth", 12.0, true, 12.0},
        {"value: read-only", "width", 5.0, false, 0.0},
        {"value: path fails", "nothing.width", 5.0, false, QVariant()},
        // Dynamic properties report false, as QObject::setProperty does.
        {"value: dynamic", "extra", 1, false, 1},
    };
    for (const auto &r : rows)
        QTest::newRow(r.tag) << QByteArray(r.name) << r.value << r.result << r.expected;
}

void tst_ZXmlUI::setPropertyEx()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, value);
    QFETCH(bool, result);
    QFETCH(QVariant, expected);
    const char *n = name.isNull() ? nullptr : name.constData();
    const bool text = value.metaType() == QMetaType::fromType<QByteArray>();
    Probe probe;
    if (text) {
        QCOMPARE(probe.setPropertyEx(n, value.toByteArray().constData()), result);
        QCOMPARE(ZXmlUI::setPropertyEx(&probe, n, value.toByteArray().constData()), result);
        QVERIFY(!ZXmlUI::setPropertyEx(nullptr, n, value.toByteArray().constData()));
    } else {
        QCOMPARE(ZXmlUI::setPropertyEx(&probe, n, value), result);
        QVERIFY(!ZXmlUI::setPropertyEx(nullptr, n, value));
    }
    if (!expected.isValid())
        return;
    QObject *holder = name.startsWith("inner.") ? probe.inner() : &probe;
    QCOMPARE(holder->property(name.mid(name.indexOf('.') + 1).constData()), expected);
}

void tst_ZXmlUI::objectArgumentUsesCurrentName()
{
    // "late" gives objectArgument before its name: it is registered under
    // the empty name, so the event naming "late" finds nothing while the
    // one naming "" connects.
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='receiver'>"
                                          "  <Probe objectName='early' objectArgument='ignored'/>"
                                          "  <Probe objectArgument='' objectName='late'/>"
                                          "  <r:event object='early' signal='clicked()' slot='onClicked()'/>"
                                          "  <r:event object='late' signal='clicked()' slot='onClicked()'/>"
                                          "  <r:event object='' signal='valueChanged(int)' slot='onValue(int)'/>"
                                          "</Probe>"),
                                     &target));
    auto *receiver = find(&target, "receiver");
    auto *early = find(&target, "early");
    auto *late = find(&target, "late");
    QVERIFY(receiver && early && late);
    Q_EMIT early->clicked();
    QCOMPARE(receiver->clicks, 1);
    Q_EMIT late->clicked();
    QCOMPARE(receiver->clicks, 1);
    Q_EMIT late->valueChanged(9);
    QCOMPARE(receiver->received, QVariantList{9});
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("ConnectionFailed")});
    QVERIFY(diag.list[0].message.contains(QLatin1String("\"late\"")));
    QCOMPARE(diag.list[0].line, 1);
    QVERIFY(diag.list[0].column > 1);
    // The objectArgument attributes themselves stay undeclared and unset.
    QVERIFY(!early->property("objectArgument").isValid());
}

void tst_ZXmlUI::connectionWords_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<bool>("queued");
    QTest::newRow("auto") << QByteArray("connect='auto'") << false;
    QTest::newRow("direct") << QByteArray("connect='direct'") << false;
    QTest::newRow("queue") << QByteArray("connect='queue'") << true;
    QTest::newRow("Queue capitalised is auto") << QByteArray("connect='Queue'") << false;
    QTest::newRow("queued is auto") << QByteArray("connect='queued'") << false;
    QTest::newRow("absent") << QByteArray() << false;
}

void tst_ZXmlUI::connectionWords()
{
    QFETCH(QByteArray, word);
    QFETCH(bool, queued);
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='r'>"
                                          "  <Probe objectName='s' objectArgument=''/>"
                                          "  <r:event object='s' signal='clicked()' slot='onClicked()' " + word + "/>"
                                          "  <r:invoke function='take' arguments='int(5)' " + word + "/>"
                                          "</Probe>"),
                                     &target));
    auto *r = find(&target, "r");
    QCOMPARE(r->received, queued ? QVariantList() : QVariantList{5});
    Q_EMIT find(&target, "s")->clicked();
    QCOMPARE(r->clicks, queued ? 0 : 1);
    QCoreApplication::processEvents();
    QCOMPARE(r->received, QVariantList{5});
    QCOMPARE(r->clicks, 1);
}

void tst_ZXmlUI::eventFailures()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='r'>"
                                          "  <Probe objectName='s' objectArgument=''/>"
                                          "  <r:event object='nobody' signal='clicked()' slot='onClicked()'/>"
                                          "  <r:event object='s' signal='pressed()' slot='onClicked()'/>"
                                          "  <r:event object='s' signal='clicked()' slot='missing()'/>"
                                          "  <r:event object='s' signal='clicked()' slot='clicked()'/>"
                                          "  <r:event object='s' signal='clicked()' slot='onValue(int)'/>"
                                          "  <r:event object='s' signal='valueChanged( int )' slot=' onValue(int)'/>"
                                          "</Probe>"),
                                     &target));
    QCOMPARE(diag.kinds(), QStringList(5, QStringLiteral("ConnectionFailed")));
    QVERIFY(diag.list[0].message.contains(QLatin1String("\"nobody\"")));
    QVERIFY(diag.list[1].message.contains(QLatin1String("no signal pressed()")));
    QVERIFY(diag.list[2].message.contains(QLatin1String("no slot missing()")));
    QVERIFY(diag.list[3].message.contains(QLatin1String("no slot clicked()"))); // signals are not slots here
    QVERIFY(diag.list[4].message.contains(QLatin1String("do not fit")));
    // The signatures are normalised before use.
    Q_EMIT find(&target, "s")->valueChanged(3);
    QCOMPARE(find(&target, "r")->received, QVariantList{3});
}

void tst_ZXmlUI::invoke_data()
{
    QTest::addColumn<QByteArray>("arguments");
    QTest::addColumn<QVariantList>("received");
    QTest::addColumn<QString>("failure"); // empty: no diagnostic
    const char *const ten = "int(1),int(2),int(3),int(4),int(5),int(6),int(7),int(8),int(9),int(10)";
    const struct
    {
        const char *tag, *function;
        QByteArray arguments;
        QVariantList received;
        const char *failure;
    } rows[] = {
        {"one int", "take", "int(7)", {7}, ""},
        {"stops at the first empty piece", "take", "int(1),,int(2)", {1}, ""},
        {"two ints", "take", "int(1),int(2)", {1, 2}, ""},
        {"several types", "takeMany", "QString(hello),qreal(2.5),bool(true),QColor(#00ff0080),uint(7)",
         {QStringLiteral("hello"), 2.5, true, QColor(0, 255, 0, 128), 7u}, ""},
        {"variant", "takeVariant", "QVariant(text)", {QStringLiteral("text")}, ""},
        {"ten", "takeTen", ten, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, ""},
        {"no such method", "nothing", "int(1)", {}, "Probe has no invokable method nothing(int)"},
        {"wrong argument type", "take", "QString(1)", {}, "no invokable method take(QString)"},
        {"unknown type", "take", "Whatever(1)", {}, "unknown type Whatever"},
        {"not type(value)", "take", "int 5", {}, "not written type(value)"},
        {"value does not read", "take", "int(five)", {}, "\"five\" is not a valid int"},
        {"nested parentheses", "take", "int((4))", {}, "argument 1 \"int((4))\""},
        // "," separates arguments, so a size has no way to be written.
        {"converter fallback", "take", "QSize(3;4)", {}, "\"3;4\" is not a valid QSize"},
        {"eleven arguments", "takeTen", QByteArray(ten) + ",int(11)", {}, "more than ten arguments"},
    };
    for (const auto &r : rows) {
        QTest::newRow(r.tag) << "function='" + QByteArray(r.function) + "' arguments='" + r.arguments + "'"
                             << r.received << QString::fromUtf8(r.failure);
    }
}

void tst_ZXmlUI::invoke()
{
    QFETCH(QByteArray, arguments);
    QFETCH(QVariantList, received);
    QFETCH(QString, failure);
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='r'>\n  <r:invoke " + arguments + "/></Probe>"), &target));
    QCOMPARE(find(&target, "r")->received, received);
    if (failure.isEmpty()) {
        QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));
        return;
    }
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("InvocationFailed")});
    QVERIFY2(diag.list[0].message.startsWith(QLatin1String("<r:invoke>: ")), qPrintable(diag.dump()));
    QVERIFY2(diag.list[0].message.contains(failure), qPrintable(diag.dump()));
    QCOMPARE(diag.list[0].line, 2);
    QCOMPARE(diag.list[0].column, 3);
}

void tst_ZXmlUI::dataElements()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(
        tree("<Probe objectName='a'><list:data value='1'/></Probe>"
             "<Probe objectName='b'><list:data model='xml' value='2' connect='queue'/></Probe>"
             "<Probe objectName='c'><list:data function='setNote' value='3'/></Probe>"
             "<Probe objectName='v'><m:data model='variant'><item text='one' icon='i.png'><sub x='1'/></item>"
             "  <other/></m:data></Probe>"
             "<Probe objectName='w'><m:data model='variant'><x/></m:data><m:data model='variant' function='receiveList'/>"
             "</Probe>"
             "<Probe objectName='bad'><m:data model='json'/><m:junk/><m:/><:data/></Probe>"),
        &target));
    auto *a = find(&target, "a");
    QCOMPARE(a->dataCalls, 1);
    QCOMPARE(a->xmlName, QStringLiteral("list:data"));
    QCOMPARE(a->xmlValue, QStringLiteral("1"));
    // Queued delivery would outlive the element: it is made directly, with a note.
    QCOMPARE(find(&target, "b")->xmlValue, QStringLiteral("2"));
    QCOMPARE(find(&target, "c")->dataCalls, 0);

    // One map per child: its name to its attributes; grandchildren are not read.
    const QVariantList list = find(&target, "v")->variant.toList();
    QCOMPARE(list.size(), 2);
    const QVariantMap item{{QStringLiteral("text"), QStringLiteral("one")}, {QStringLiteral("icon"), QStringLiteral("i.png")}};
    QCOMPARE(list[0].toMap(), (QVariantMap{{QStringLiteral("item"), item}}));
    QCOMPARE(list[1].toMap(), (QVariantMap{{QStringLiteral("other"), QVariantMap()}}));
    // setData(QVariant) got a list first, then receiveList an empty one.
    auto *w = find(&target, "w");
    QCOMPARE(w->dataCalls, 1);
    QCOMPARE(w->variant.metaType(), QMetaType::fromType<QVariantList>());
    QCOMPARE(w->variant.toList(), QVariantList());

    QCOMPARE(find(&target, "bad")->dataCalls, 1); // only ":data"
    QCOMPARE(diag.kinds(), (QStringList{QStringLiteral("DataFailed"), QStringLiteral("DataFailed"),
                                        QStringLiteral("DataFailed"), QStringLiteral("UnknownAction"),
                                        QStringLiteral("UnknownAction")}));
    QVERIFY(diag.list[1].message.contains(QLatin1String("no invokable method setNote(const XMLNode*)")));
}

void tst_ZXmlUI::helpers()
{
    Diagnostics diag;
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(tree(
        "<TestWindow><ZSpacer objectName='bar'><Probe objectName='ok'/><Probe objectName='r'/></ZSpacer></TestWindow>",
        "<ZSignalConnector targetPath='bar/ok' signal='clicked()' receiver='bar/r' slot='onClicked()'/>"
        "<ZFindChild targetPath='bar'>"
        "  <ZSignalConnector targetPath='ok' signal='valueChanged(int)' receiver='r' slot='onValue(int)'/>"
        "  <ZFindChild targetPath='nowhere'><ZHelper objectName='neverMade'/></ZFindChild>"
        "</ZFindChild>"
        "<ZFindChild targetPath='r'/>"
        "<ZSignalConnector targetPath='r' signal='clicked()' slot='close()'/>"
        "<ZHelper targetPath=''/>"
        "<NoHelper/>"
        "<ZSignalConnector targetPath='bar/ok' signal='none()' slot='onClicked()'>"
        "  <ZSignalConnector targetPath='' signal='clicked()' slot='onClicked()'/>"
        "</ZSignalConnector>")));
    QVERIFY(w);
    auto *ok = find(w.get(), "ok");
    auto *r = find(w.get(), "r");
    Q_EMIT ok->clicked();
    QCOMPARE(r->clicks, 1);
    Q_EMIT ok->valueChanged(4);
    QCOMPARE(r->received, QVariantList{4});

    // Helpers stay as children of the window (or of their parent helper).
    QCOMPARE(w->findChildren<ZHelper *>().size(), 8);
    QVERIFY(!w->findChild<ZHelper *>(QStringLiteral("neverMade")));
    // ZHelper steps through direct children only: "r" is not one of the
    // window's, while ZFindChild finds it at any depth.
    QCOMPARE(diag.kinds(), (QStringList{QStringLiteral("HelperFailed"), QStringLiteral("HelperFailed"),
                                        QStringLiteral("UnknownHelper"), QStringLiteral("HelperFailed")}));
    QVERIFY(diag.list[0].message.contains(QLatin1String("\"nowhere\"")));
    QVERIFY(diag.list[0].message.contains(QLatin1String("nested helpers are skipped")));
    QVERIFY(diag.list[1].message.startsWith(QLatin1String("<ZSignalConnector>: targetPath \"r\" names no object")));

    // Run by hand: no root, a path below the root, a path that breaks.
    ZHelper base;
    QVERIFY(!base.execute());
    QVERIFY(!base.errorString().isEmpty());
    ZSpacer root;
    auto *child = new ZSpacer;
    child->setObjectName(QStringLiteral("c"));
    root.addItem(child);
    base.setRootObject(&root);
    base.setTargetPath(QStringLiteral("c"));
    QVERIFY(base.execute());
    QCOMPARE(base.target(), child);
    QVERIFY(base.errorString().isEmpty());
    base.setTargetPath(QStringLiteral("c/d"));
    QVERIFY(!base.execute());
    QCOMPARE(base.target(), nullptr);
}

void tst_ZXmlUI::methodInvoker()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='p'/><Probe objectName='q' objectArgument=''/>",
                                          "<ZMethodInvoker targetPath='p' method='take' arguments='int(1),int(2)'/>"
                                          "<ZMethodInvoker targetPath='q' method='takeObjects' "
                                          "  arguments='QObject*(q),QWidget*(q)'/>"
                                          "<ZMethodInvoker targetPath='p' method='missing'/>"
                                          "<ZMethodInvoker targetPath='p'/>"),
                                     &target));
    QCOMPARE(find(&target, "p")->received, (QVariantList{1, 2}));
    // Objects come from the registry; a Probe is no QWidget.
    auto *q = find(&target, "q");
    QCOMPARE(q->received.value(0).value<QObject *>(), q);
    QCOMPARE(q->received.value(1).value<QWidget *>(), nullptr);
    QCOMPARE(diag.kinds(), QStringList(2, QStringLiteral("HelperFailed")));
    QVERIFY(diag.list[0].message.contains(QLatin1String("no invokable method missing()")));
    QVERIFY(diag.list[1].message.contains(QLatin1String("no method given")));
}

void tst_ZXmlUI::skinApplication()
{
    Diagnostics diag; // before initSkin, which notes where skins are defined only then
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin>"
                                        "  <ZWidget name='wide' fixWidth='33' margins='1,2,3,4' inner.fixHeight='5'/>\n"
                                        "  <Probe name='probe' fixWidth='34' note='n'/>"
                                        "  <ZWindow name='framed' sceneMargins='4,4,4,4'/>"
                                        "  <ZSpacer name='tall' fixHeight='40' objectName='skinned'/>"
                                        "  <ZWidget name='a' skinName='b' fixWidth='1'/>"
                                        "  <ZWidget name='b' skinName='a' fixHeight='2'/>"
                                        "</uiskin>")));
    // A skin for a class applies to its subclasses, directly or through the theme.
    Probe probe;
    probe.setSkinName(QStringLiteral("wide"));
    QCOMPARE(probe.fixWidth(), 33.0);
    QCOMPARE(probe.margins(), QMargins(1, 2, 3, 4));
    QCOMPARE(qobject_cast<ZWidget *>(probe.inner())->fixHeight(), 5.0);
    QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));
    // A path the object lacks is reported; the rest still applies.
    ZWidget plain;
    ZTheme::setSkinName(&plain, QStringLiteral("wide"));
    QCOMPARE(plain.fixWidth(), 33.0);
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("UnresolvedPath")});
    diag.list.clear();

    // From a document's skinName attribute, on windows too.
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(
        tree("<TestWindow skinName='framed'><ZSpacer objectName='s' skinName='tall'/></TestWindow>")));
    QVERIFY(w);
    QCOMPARE(w->sceneMargins(), QMargins(4, 4, 4, 4));
    auto *s = find<ZSpacer>(w.get(), "skinned");
    QVERIFY(s);
    QCOMPARE(s->fixHeight(), 40.0);

    // Refused for a class that is no subclass; reported where the skin was defined.
    ZSpacer spacer;
    spacer.setSkinName(QStringLiteral("probe"));
    QCOMPARE(spacer.fixWidth(), -1.0);
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("SkinClassMismatch")});
    QCOMPARE(diag.list[0].line, 2);
    QVERIFY(diag.list[0].message.contains(QLatin1String("skin \"probe\" is for Probe")));
    spacer.setSkinName(QStringLiteral("unknown"));
    spacer.setSkinName(QString());
    QCOMPARE(diag.kinds(), (QStringList{QStringLiteral("SkinClassMismatch"), QStringLiteral("UnknownSkin")}));

    // "a" chains to "b", which chains back to "a": that one is not applied again.
    diag.list.clear();
    ZWidget chained;
    chained.setSkinName(QStringLiteral("a"));
    QCOMPARE(chained.fixWidth(), 1.0);
    QCOMPARE(chained.fixHeight(), 2.0);
    QCOMPARE(chained.skinName(), QStringLiteral("a"));
    QCOMPARE(diag.list.size(), 1);
}

void tst_ZXmlUI::skinValuesAreCached()
{
    QVERIFY(ZPropertyConverter::registerConverter<Tag>("Tag", tagConverter));
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin><Probe name='tagged' tag='abc'/></uiskin>")));
    g_tagConversions = 0;
    Probe a, b, c;
    a.setSkinName(QStringLiteral("tagged"));
    b.setSkinName(QStringLiteral("tagged"));
    c.setSkinName(QStringLiteral("tagged"));
    QCOMPARE(c.tag(), Tag{QStringLiteral("ABC")});
    QCOMPARE(b.tag(), Tag{QStringLiteral("ABC")});
    QCOMPARE(g_tagConversions, 1);

    // A new definition starts a new cache.
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin><Probe name='tagged' tag='xyz'/></uiskin>")));
    Probe d;
    d.setSkinName(QStringLiteral("tagged"));
    QCOMPARE(d.tag(), Tag{QStringLiteral("XYZ")});
    QCOMPARE(g_tagConversions, 2);
}

void tst_ZXmlUI::skinDefinitionRules()
{
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin><ZWidget name='keep' fixWidth='1'/></uiskin>")));
    // Failures leave the skins alone.
    QVERIFY(!ZXmlUI::initSkin(QByteArray("<uiskin><ZWidget")));
    QVERIFY(!ZXmlUI::initSkin(QByteArray("<notskin/>")));
    ZWidget w;
    w.setSkinName(QStringLiteral("keep"));
    QCOMPARE(w.fixWidth(), 1.0);

    Diagnostics diag;
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin>"
                                        "  <ZWidget name='twice' fixWidth='2'/>"
                                        "  <ZWidget name='twice' fixHeight='3'/>"
                                        "  <ZWidget fixWidth='4'/>"
                                        "  <Unknown name='u'/>"
                                        "  <ZHelper name='h'/>"
                                        "</uiskin>")));
    QCOMPARE(diag.kinds().count(QStringLiteral("UnknownClass")), 2); // helpers have no skins
    QCOMPARE(diag.kinds().count(QStringLiteral("UnknownSkin")), 1);  // the nameless one
    // initSkin empties the store: "keep" is gone; the later "twice" won.
    ZWidget v;
    v.setSkinName(QStringLiteral("keep"));
    QCOMPARE(v.fixWidth(), -1.0);
    v.setSkinName(QStringLiteral("twice"));
    QCOMPARE(v.fixWidth(), -1.0);
    QCOMPARE(v.fixHeight(), 3.0);
}

void tst_ZXmlUI::silentWithoutSink()
{
    // Without a sink nothing is printed, whatever goes wrong.
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='p' width='3' margins='1' nothing.x='1' layout='No'>"
                                          "<Unknown/><p:event object='x' signal='a()' slot='b()'/>"
                                          "<p:event object='p' signal='a()' slot='b()'/>"
                                          "<p:invoke function='none' arguments='int(x)'/>"
                                          "<p:data function='none'/><p:data model='variant' function='none'/></Probe>",
                                          "<NoHelper/><ZSignalConnector signal='x()'/>"),
                                     &target));
    QVERIFY(!ZXmlUI::windowFromMemory("<uitree><ZWindow"));
}

void tst_ZXmlUI::positions()
{
    Diagnostics diag;
    QVERIFY(!ZXmlUI::windowFromMemory("<uitree>\n  <ZWindow>\n    <a b=c/>\n</uitree>"));
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("ParseError")});
    QCOMPARE(diag.list[0].line, 3);
    QCOMPARE(diag.list[0].column, 10);
    QVERIFY(!diag.list[0].message.isEmpty());
    // Unclosed elements are a warning: the window still loads.
    diag.list.clear();
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory("<uitree><ZWindow objectName='w'>"));
    QVERIFY(w);
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("ParseWarning")});

    // Columns count characters, not bytes; a byte-order mark is not counted.
    const QByteArray text = "\xEF\xBB\xBF<uitree>\n<ZSpacer>\n\t<Unknown1/>\n  <ZSpacer title='\xC3\xA9\xC3\xA9'><Unknown2/>"
                            "</ZSpacer></ZSpacer></uitree>";
    diag.list.clear();
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(text, &target));
    QCOMPARE(diag.list.size(), 2);
    QCOMPARE(QPoint(diag.list[0].line, diag.list[0].column), QPoint(3, 2));
    QCOMPARE(QPoint(diag.list[1].line, diag.list[1].column), QPoint(4, 23));
    QVERIFY(diag.list[1].file.isEmpty());
    // The document model reports the same positions.
    const XMLNode doc = XMLNode::parseString(text.constData());
    XMLNode copy = doc;
    const XMLNode unknown2 = copy.getChildNodeByPath("uitree/ZSpacer/ZSpacer/Unknown2", 0);
    int line = 0, column = 0;
    QVERIFY(unknown2.sourcePosition(text.constData(), &line, &column));
    QCOMPARE(QPoint(line, column), QPoint(4, 23));
    QVERIFY(!unknown2.sourcePosition("short", &line, &column));
    QCOMPARE(doc.sourceOffset(), -1);
    QCOMPARE(XMLNode::createXMLTopNode("made").sourceOffset(), -1);
    QCOMPARE(unknown2.deepCopy().sourceOffset(), unknown2.sourceOffset());
}

void tst_ZXmlUI::deepNesting()
{
    // Widget and helper elements below MaximumDepth are skipped with one
    // note; the window load, and an unknown class whose subtree is as deep,
    // stay bounded too.
    constexpr int levels = 100000;
    QByteArray spacers;
    QByteArray helpers;
    spacers.reserve(levels * 19);
    for (int i = 0; i < levels; ++i) {
        spacers += "<ZSpacer>";
        helpers += "<ZFindChild>";
    }
    for (int i = 0; i < levels; ++i) {
        spacers += "</ZSpacer>";
        helpers += "</ZFindChild>";
    }
    QElapsedTimer timer;
    timer.start();
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree(spacers), &target));
    QCOMPARE(depthBelow(&target), ZXmlUI::MaximumDepth);
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("DepthLimit")});
    QCOMPARE(diag.list[0].column, 1 + 8 + 9 * ZXmlUI::MaximumDepth);

    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(tree("<ZWindow>" + spacers + "</ZWindow>")));
    QVERIFY(w);
    QCOMPARE(depthBelow(w->rootWidget()), ZXmlUI::MaximumDepth);
    QVERIFY(!ZXmlUI::windowFromMemory(tree("<Deep>" + spacers + "</Deep>")));
    QVERIFY(timer.elapsed() < 8000);

    diag.list.clear();
    ZWidget helped;
    QVERIFY(ZXmlUI::widgetFromMemory(tree(QByteArray(), helpers), &helped));
    QCOMPARE(helped.findChildren<ZHelper *>().size(), ZXmlUI::MaximumDepth);
    QCOMPARE(diag.kinds(), QStringList{QStringLiteral("DepthLimit")});
}

void tst_ZXmlUI::nestedLoadFromConstruct()
{
    // The inner load runs in the middle of the outer one: it empties the
    // named objects and pending work recorded so far, and runs its own.
    Nester::s_inner = tree("<Probe objectName='innerSender' objectArgument=''/>"
                           "<Probe objectName='innerReceiver'>"
                           "  <r:event object='innerSender' signal='clicked()' slot='onClicked()'/></Probe>");
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='before' objectArgument=''/>"
                                          "<Probe objectName='r1'>"
                                          "  <r:event object='before' signal='clicked()' slot='onClicked()'/>"
                                          "  <r:invoke function='take' arguments='int(1)'/></Probe>"
                                          "<Nester objectName='nester'/>"
                                          "<Probe objectName='after' objectArgument=''/>"
                                          "<Probe objectName='r2'>"
                                          "  <r:event object='after' signal='clicked()' slot='onClicked()'/>"
                                          "  <r:event object='before' signal='clicked()' slot='onClicked()'/></Probe>"),
                                     &target));
    QVERIFY(find<Nester>(&target, "nester")->nestedResult);
    Q_EMIT find(&target, "innerSender")->clicked();
    QCOMPARE(find(&target, "innerReceiver")->clicks, 1);

    Q_EMIT find(&target, "before")->clicked();
    Q_EMIT find(&target, "after")->clicked();
    auto *r1 = find(&target, "r1");
    QCOMPARE(r1->clicks, 0);                // its connection was dropped
    QCOMPARE(r1->received, QVariantList()); // and its call
    QCOMPARE(find(&target, "r2")->clicks, 1); // "after" only: "before" was forgotten
    QCOMPARE(diag.kinds().count(QStringLiteral("PendingDropped")), 1);
    QCOMPARE(diag.kinds().count(QStringLiteral("ConnectionFailed")), 1);
}

QTEST_MAIN(tst_ZXmlUI)
#include "tst_zxmlui.moc"
