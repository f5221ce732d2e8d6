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
#include <QRandomGenerator>
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

public:
    Q_INVOKABLE explicit Probe(QGraphicsItem *parent = nullptr)
        : ZWidget(parent)
    {
        g_log << QStringLiteral("create");
    }

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
    int dataCalls = 0;
    QVariantList received;
    int clicks = 0;

public Q_SLOTS:
    void onClicked() { ++clicks; }
    void onValue(int v) { received = {v}; }
    void take(int v) { received = {v}; }
    void take(int a, int b) { received = {a, b}; }
    void takeMany(const QString &s, qreal r, bool b, const QColor &c, uint u)
    {
        received = {s, r, b, c, u};
    }
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
    Q_INVOKABLE explicit TestWindow(QWidget *parent = nullptr)
        : ZWindow(parent)
        , m_titlebar(new ZWidget)
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
    void construct() override
    {
        nestedResult = ZXmlUI::widgetFromMemory(s_inner, this);
    }
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
    Diagnostics()
    {
        ZXmlUI::setDiagnosticsSink([this](const Diagnostic &d) { list.append(d); });
    }
    ~Diagnostics() { ZXmlUI::setDiagnosticsSink({}); }
    QList<Diagnostic> of(Diagnostic::Kind kind) const
    {
        QList<Diagnostic> r;
        for (const Diagnostic &d : list) {
            if (d.kind == kind)
                r.append(d);
        }
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

template<typename T>
T *find(QObject *root, const QString &name)
{
    if (auto *w = qobject_cast<ZWidget *>(root))
        return qobject_cast<T *>(w->findObject(name));
    if (auto *win = qobject_cast<ZWindow *>(root))
        return qobject_cast<T *>(win->rootWidget()->findObject(name));
    return nullptr;
}

int depthBelow(ZWidget *top)
{
    int depth = 0;
    for (QGraphicsItem *item = top; item;) {
        QGraphicsItem *next = nullptr;
        for (QGraphicsItem *child : item->childItems()) {
            if (qobject_cast<ZSpacer *>(child->toGraphicsObject())) {
                next = child;
                break;
            }
        }
        if (next)
            ++depth;
        item = next;
    }
    return depth;
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
    void init();

    // Windows and widget trees.
    void windowFromMemory();
    void creationOrder();
    void unknownWindowClass();
    void windowDocumentFaults_data();
    void windowDocumentFaults();
    void misspeltElementVanishesWithChildren();
    void widgetLoad();
    void widgetLoadWithoutTarget();
    void actionsAtTopLevelAreClasses();
    void destroyedCreatorIsUnknown();
    void fileLoads();
    void messageBoxResource();

    // Attributes and setPropertyEx.
    void attributes_data();
    void attributes();
    void dottedPathOnWindow();
    void setPropertyExText_data();
    void setPropertyExText();
    void setPropertyExVariant();
    void objectArgumentUsesCurrentName();

    // Actions.
    void connectionWords_data();
    void connectionWords();
    void eventFailures();
    void invokeArguments_data();
    void invokeArguments();
    void invokeFailures_data();
    void invokeFailures();
    void dataXml();
    void dataVariant();
    void dataFailures();

    // Helpers.
    void helpers();
    void helperFailureSkipsNested();
    void methodInvoker();

    // Skins.
    void skinAppliesToSubclass();
    void skinRefusedForUnrelatedClass();
    void skinFromDocumentAttribute();
    void skinValuesAreCached();
    void skinDefinitionRules();
    void skinSettingSkinNameDoesNotLoop();

    // Diagnostics and bad input.
    void silentWithoutSink();
    void parseErrorPosition();
    void elementPositions();
    void deepNesting();
    void deepHelperNesting();
    void nestedLoadFromConstruct();
    void randomDocuments();
};

void tst_ZXmlUI::init()
{
    g_log.clear();
}

void tst_ZXmlUI::windowFromMemory()
{
    Diagnostics diag;
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(tree(
        "<TestWindow objectName='top' sceneMargins='1,2,3,4'>"
        "  <ZSpacer objectName='box' layout='VBox' margins='10,5,10,10'>"
        "    <Probe objectName='p' fixWidth='60'/>"
        "  </ZSpacer>"
        "</TestWindow><ZWindow objectName='ignored'/>")));
    QVERIFY(w);
    auto *window = qobject_cast<TestWindow *>(w.get());
    QVERIFY(window);
    QCOMPARE(window->objectName(), QStringLiteral("top"));
    QCOMPARE(window->sceneMargins(), QMargins(1, 2, 3, 4));
    QCOMPARE(window->constructed, 1);
    auto *box = find<ZSpacer>(window, QStringLiteral("box"));
    auto *probe = find<Probe>(window, QStringLiteral("p"));
    QVERIFY(box && probe);
    QCOMPARE(box->parentItem(), window->rootWidget());
    QCOMPARE(probe->parentItem(), box);
    QCOMPARE(probe->parent(), box);
    QCOMPARE(box->layoutType(), ZWidget::VBox);
    QCOMPARE(box->margins(), QMargins(10, 5, 10, 10));
    QCOMPARE(probe->fixWidth(), 60.0);
    // In the box's layout, not only a child item.
    auto *layout = dynamic_cast<QGraphicsLinearLayout *>(box->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0), probe);
    QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));
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

void tst_ZXmlUI::unknownWindowClass()
{
    Diagnostics diag;
    QPointer<ZWindow> w = ZXmlUI::windowFromMemory(tree("<NoSuchWindow><Probe objectName='x'/></NoSuchWindow>"));
    QVERIFY(!w);
    QCOMPARE(g_log, QStringList()); // nothing was made
    const auto unknown = diag.of(Diagnostic::UnknownClass);
    QCOMPARE(unknown.size(), 1);
    QVERIFY(unknown[0].message.contains(QLatin1String("NoSuchWindow")));
}

void tst_ZXmlUI::windowDocumentFaults_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("kind");
    QTest::newRow("no uitree") << QByteArray("<tree><ZWindow/></tree>") << int(Diagnostic::MissingRoot);
    QTest::newRow("uitree nested, not on top") << QByteArray("<a><uitree><ZWindow/></uitree></a>")
                                               << int(Diagnostic::MissingRoot);
    QTest::newRow("empty uitree") << QByteArray("<uitree/>") << int(Diagnostic::MissingRoot);
    QTest::newRow("does not parse") << QByteArray("<uitree><ZWindow></uitree") << int(Diagnostic::ParseError);
    QTest::newRow("empty text") << QByteArray() << int(Diagnostic::ParseError);
}

void tst_ZXmlUI::windowDocumentFaults()
{
    QFETCH(QByteArray, text);
    QFETCH(int, kind);
    Diagnostics diag;
    QVERIFY(!ZXmlUI::windowFromMemory(text));
    QCOMPARE(diag.list.size(), 1);
    QCOMPARE(int(diag.list[0].kind), kind);
}

void tst_ZXmlUI::misspeltElementVanishesWithChildren()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<ZSpacr objectName='gone'><Probe objectName='lost'/><Nope/></ZSpacr>"
                                          "<zspacer objectName='lower'/><ZSpacer objectName='kept'/>"),
                                     &target));
    QVERIFY(!target.findObject(QStringLiteral("gone")));
    QVERIFY(!target.findObject(QStringLiteral("lower"))); // names are case-sensitive
    QVERIFY(!target.findObject(QStringLiteral("lost")));
    QVERIFY(target.findObject(QStringLiteral("kept")));
    QCOMPARE(g_log, QStringList()); // no Probe was made
    // The misspelt class, and the unknown one inside it, are named.
    const auto unknown = diag.of(Diagnostic::UnknownClass);
    QCOMPARE(unknown.size(), 3);
    QVERIFY(unknown[0].message.contains(QLatin1String("\"ZSpacr\"")));
    QVERIFY(unknown[1].message.contains(QLatin1String("\"Nope\"")));
    QVERIFY(unknown[2].message.contains(QLatin1String("\"zspacer\"")));
}

void tst_ZXmlUI::widgetLoad()
{
    ZWidget target;
    target.setLayoutType(ZWidget::HBox);
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<ZSpacer objectName='one'/><ZSpacer objectName='two'/>"), &target));
    auto *layout = dynamic_cast<QGraphicsLinearLayout *>(target.layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 2);
    QCOMPARE(static_cast<ZWidget *>(layout->itemAt(1))->objectName(), QStringLiteral("two"));

    // A document without uitree fails; an empty uitree succeeds.
    QVERIFY(!ZXmlUI::widgetFromMemory("<other/>", &target));
    QVERIFY(ZXmlUI::widgetFromMemory("<uitree/>", &target));
}

void tst_ZXmlUI::widgetLoadWithoutTarget()
{
    Diagnostics diag;
    QVERIFY(!ZXmlUI::widgetFromMemory(tree("<Probe/>"), nullptr));
    QVERIFY(!ZXmlUI::widgetFromFile(QStringLiteral(":/none.xml"), nullptr));
    QCOMPARE(g_log, QStringList());
    QCOMPARE(diag.of(Diagnostic::MissingRoot).size(), 2);
}

void tst_ZXmlUI::actionsAtTopLevelAreClasses()
{
    Diagnostics diag;
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(
        tree("<TestWindow><x:invoke function='close'/><ZSpacer objectName='s'/></TestWindow>")));
    QVERIFY(w);
    QVERIFY(find<ZSpacer>(w.get(), QStringLiteral("s")));
    const auto unknown = diag.of(Diagnostic::UnknownClass);
    QCOMPARE(unknown.size(), 1);
    QVERIFY(unknown[0].message.contains(QLatin1String("x:invoke")));
    QVERIFY(diag.of(Diagnostic::InvocationFailed).isEmpty());
}

void tst_ZXmlUI::destroyedCreatorIsUnknown()
{
    class Local : public ZWidget
    {
    public:
        using ZWidget::ZWidget;
    };
    ZWidget target;
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
    QCOMPARE(diag.of(Diagnostic::FileNotFound).size(), 3);
    QCOMPARE(diag.list.size(), 3);
}

void tst_ZXmlUI::messageBoxResource()
{
    const char *path = ":/xml/theme/xml/msgbox.xml";
    XMLNode doc;
    QVERIFY(ZResource::loadXml(QString::fromLatin1(path), doc));
    const XMLNode windowElement = doc.getChildNodeByPath("uitree", 0).getChildNode(0);
    QCOMPARE(QByteArray(windowElement.getName()), QByteArray("ZMessageBox"));

    // The classes of the document that are not registered (yet).
    QSet<QString> expected;
    const bool windowKnown = ZWindowCreatorBase::find("ZMessageBox");
    if (!windowKnown)
        expected.insert(QStringLiteral("ZMessageBox"));
    std::vector<XMLNode> stack{windowElement};
    while (!stack.empty()) {
        const XMLNode n = stack.back();
        stack.pop_back();
        for (int i = 0; i < n.nChildNode(); ++i) {
            const XMLNode c = n.getChildNode(i);
            if (!ZWidgetCreatorBase::find(c.getName()))
                expected.insert(QString::fromLatin1(c.getName()));
            stack.push_back(c);
        }
    }

    Diagnostics diag;
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromFile(path));
    QCOMPARE(bool(w), windowKnown);
    QSet<QString> named;
    for (const Diagnostic &d : diag.of(Diagnostic::UnknownClass)) {
        QCOMPARE(d.file, QString::fromLatin1(path));
        QVERIFY(d.line > 0);
        const int a = d.message.indexOf(QLatin1Char('<')) + 1;
        named.insert(d.message.mid(a, d.message.indexOf(QLatin1Char('>')) - a));
    }
    QCOMPARE(named, expected);
}

void tst_ZXmlUI::attributes_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("expected");
    QTest::addColumn<int>("diagnostic"); // -1: none
    QTest::newRow("number") << QByteArray("fixHeight='20'") << QByteArray("fixHeight") << QVariant(20.0) << -1;
    QTest::newRow("bool") << QByteArray("sizeToChild='true'") << QByteArray("sizeToChild") << QVariant(true) << -1;
    QTest::newRow("enum key") << QByteArray("layout='HBox'") << QByteArray("layout")
                              << QVariant::fromValue(ZWidget::HBox) << -1;
    QTest::newRow("enum by key, other class") << QByteArray("dragPolicy='WindowMove'") << QByteArray("dragPolicy")
                                              << QVariant::fromValue(ZWidget::WindowMove) << -1;
    QTest::newRow("flags") << QByteArray("alignment='AlignLeft|AlignVCenter'") << QByteArray("alignment")
                           << QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter) << -1;
    QTest::newRow("margins converter") << QByteArray("margins='1.9,2,3,4'") << QByteArray("margins")
                                       << QVariant::fromValue(QMargins(1, 2, 3, 4)) << -1;
    QTest::newRow("colour converter") << QByteArray("backgroundColor='#ff000080'") << QByteArray("backgroundColor")
                                      << QVariant(QColor(255, 0, 0, 128)) << -1;
    QTest::newRow("size converter") << QByteArray("fixSize='10,20,30'") << QByteArray("fixSize")
                                    << QVariant(QSizeF(10, 20)) << -1;
    QTest::newRow("registered user type") << QByteArray("tag='abc'") << QByteArray("tag")
                                          << QVariant::fromValue(Tag{QStringLiteral("ABC")}) << -1;
    QTest::newRow("unknown attribute: dynamic string") << QByteArray("foo='bar'") << QByteArray("foo")
                                                       << QVariant(QStringLiteral("bar")) << -1;
    QTest::newRow("attribute without value") << QByteArray("flag") << QByteArray("flag") << QVariant(QString())
                                             << -1;
    QTest::newRow("bad enum key: unchanged") << QByteArray("layout='Diagonal'") << QByteArray("layout")
                                             << QVariant::fromValue(ZWidget::None)
                                             << int(Diagnostic::PropertyWriteFailed);
    QTest::newRow("bad number: unchanged") << QByteArray("fixHeight='tall'") << QByteArray("fixHeight")
                                           << QVariant(-1.0) << int(Diagnostic::PropertyWriteFailed);
    QTest::newRow("read-only") << QByteArray("width='5'") << QByteArray("width") << QVariant(0.0)
                               << int(Diagnostic::PropertyWriteFailed);
    QTest::newRow("malformed margins: fallback") << QByteArray("margins='1,2,3'") << QByteArray("margins")
                                                 << QVariant::fromValue(QMargins()) << int(Diagnostic::ConversionFailed);
    QTest::newRow("malformed colour: fallback") << QByteArray("shade='255,0'")
                                                << QByteArray("shade") << QVariant(QColor())
                                                << int(Diagnostic::ConversionFailed);
    QTest::newRow("path through QObject*") << QByteArray("inner.fixHeight='7'") << QByteArray("inner.fixHeight")
                                           << QVariant(7.0) << -1;
    QTest::newRow("path through null QObject*") << QByteArray("nothing.fixHeight='7'")
                                                << QByteArray("fixHeight") << QVariant(-1.0)
                                                << int(Diagnostic::UnresolvedPath);
    QTest::newRow("path through non-object") << QByteArray("margins.left='7'") << QByteArray("left")
                                             << QVariant() << int(Diagnostic::UnresolvedPath);
    QTest::newRow("path through missing property") << QByteArray("titlebar.fixHeight='20'")
                                                   << QByteArray("fixHeight") << QVariant(-1.0)
                                                   << int(Diagnostic::UnresolvedPath);
    QTest::newRow("name ending in a dot") << QByteArray("inner.='7'") << QByteArray("inner.") << QVariant()
                                          << int(Diagnostic::UnresolvedPath);
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
    auto *probe = find<Probe>(&target, QStringLiteral("p"));
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
    QCOMPARE(diag.of(Diagnostic::UnresolvedPath).size(), 1);
    QVERIFY(diag.list[0].message.contains(QLatin1String("ZWindow has no property \"titlebar\"")));
}

void tst_ZXmlUI::setPropertyExText_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QByteArray>("readBack");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("declared") << QByteArray("spacing") << QByteArray("4") << true << QByteArray("spacing")
                              << QVariant(4);
    QTest::newRow("converted") << QByteArray("originPoint") << QByteArray("3,4") << true
                               << QByteArray("originPoint") << QVariant(QPointF(3, 4));
    QTest::newRow("path") << QByteArray("inner.toolTip") << QByteArray("hi") << true << QByteArray("inner.toolTip")
                          << QVariant(QStringLiteral("hi"));
    QTest::newRow("failed write is still true") << QByteArray("spacing") << QByteArray("x") << true
                                                << QByteArray("spacing") << QVariant(0);
    QTest::newRow("dynamic") << QByteArray("colour") << QByteArray("blue") << true << QByteArray("colour")
                             << QVariant(QStringLiteral("blue"));
    QTest::newRow("missing path property") << QByteArray("titlebar.text") << QByteArray("x") << false
                                           << QByteArray() << QVariant();
    QTest::newRow("null path object") << QByteArray("nothing.text") << QByteArray("x") << false << QByteArray()
                                      << QVariant();
    QTest::newRow("empty piece") << QByteArray("inner..toolTip") << QByteArray("x") << false << QByteArray()
                                 << QVariant();
}

void tst_ZXmlUI::setPropertyExText()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, value);
    QFETCH(bool, result);
    QFETCH(QByteArray, readBack);
    QFETCH(QVariant, expected);
    Probe probe;
    QCOMPARE(probe.setPropertyEx(name.constData(), value.constData()), result);
    QCOMPARE(ZXmlUI::setPropertyEx(&probe, name.constData(), value.constData()), result);
    if (readBack.isEmpty())
        return;
    QObject *holder = &probe;
    if (readBack.startsWith("inner.")) {
        holder = probe.inner();
        readBack = readBack.mid(6);
    }
    QCOMPARE(holder->property(readBack.constData()), expected);
}

void tst_ZXmlUI::setPropertyExVariant()
{
    Probe probe;
    QVERIFY(ZXmlUI::setPropertyEx(&probe, "inner.fixWidth", QVariant(12.0)));
    QCOMPARE(qobject_cast<ZWidget *>(probe.inner())->fixWidth(), 12.0);
    QVERIFY(!ZXmlUI::setPropertyEx(&probe, "width", QVariant(5.0)));       // read-only
    QVERIFY(!ZXmlUI::setPropertyEx(&probe, "nothing.width", QVariant(5.0))); // path fails
    QVERIFY(!ZXmlUI::setPropertyEx(nullptr, "width", QVariant(5.0)));
    QVERIFY(!ZXmlUI::setPropertyEx(nullptr, "width", "5"));
    QVERIFY(!ZXmlUI::setPropertyEx(&probe, nullptr, "5"));
    // Dynamic properties report false, as QObject::setProperty does.
    QVERIFY(!ZXmlUI::setPropertyEx(&probe, "extra", QVariant(1)));
    QCOMPARE(probe.property("extra"), QVariant(1));
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
    auto *receiver = find<Probe>(&target, QStringLiteral("receiver"));
    auto *early = find<Probe>(&target, QStringLiteral("early"));
    auto *late = find<Probe>(&target, QStringLiteral("late"));
    QVERIFY(receiver && early && late);
    Q_EMIT early->clicked();
    QCOMPARE(receiver->clicks, 1);
    Q_EMIT late->clicked();
    QCOMPARE(receiver->clicks, 1);
    Q_EMIT late->valueChanged(9);
    QCOMPARE(receiver->received, QVariantList{9});
    const auto failed = diag.of(Diagnostic::ConnectionFailed);
    QCOMPARE(failed.size(), 1);
    QVERIFY(failed[0].message.contains(QLatin1String("\"late\"")));
    QCOMPARE(failed[0].line, 1);
    QVERIFY(failed[0].column > 1);
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
    QVERIFY(ZXmlUI::widgetFromMemory(
        tree("<Probe objectName='r'>"
             "  <Probe objectName='s' objectArgument=''/>"
             "  <r:event object='s' signal='clicked()' slot='onClicked()' " + word + "/>"
             "  <r:invoke function='take' arguments='int(5)' " + word + "/>"
             "</Probe>"),
        &target));
    auto *r = find<Probe>(&target, QStringLiteral("r"));
    auto *s = find<Probe>(&target, QStringLiteral("s"));
    QCOMPARE(r->received, queued ? QVariantList() : QVariantList{5});
    Q_EMIT s->clicked();
    QCOMPARE(r->clicks, queued ? 0 : 1);
    QCoreApplication::processEvents();
    QCOMPARE(r->received, QVariantList{5});
    QCOMPARE(r->clicks, 1);
}

void tst_ZXmlUI::eventFailures()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(
        tree("<Probe objectName='r'>"
             "  <Probe objectName='s' objectArgument=''/>"
             "  <r:event object='nobody' signal='clicked()' slot='onClicked()'/>"
             "  <r:event object='s' signal='pressed()' slot='onClicked()'/>"
             "  <r:event object='s' signal='clicked()' slot='missing()'/>"
             "  <r:event object='s' signal='clicked()' slot='clicked()'/>"
             "  <r:event object='s' signal='clicked()' slot='onValue(int)'/>"
             "  <r:event object='s' signal='valueChanged( int )' slot=' onValue(int)'/>"
             "</Probe>"),
        &target));
    const auto failed = diag.of(Diagnostic::ConnectionFailed);
    QCOMPARE(failed.size(), 5);
    QVERIFY(failed[0].message.contains(QLatin1String("\"nobody\"")));
    QVERIFY(failed[1].message.contains(QLatin1String("no signal pressed()")));
    QVERIFY(failed[2].message.contains(QLatin1String("no slot missing()")));
    QVERIFY(failed[3].message.contains(QLatin1String("no slot clicked()"))); // signals are not slots here
    QVERIFY(failed[4].message.contains(QLatin1String("do not fit")));
    // The signatures are normalised before use.
    Q_EMIT find<Probe>(&target, QStringLiteral("s"))->valueChanged(3);
    QCOMPARE(find<Probe>(&target, QStringLiteral("r"))->received, QVariantList{3});
}

void tst_ZXmlUI::invokeArguments_data()
{
    QTest::addColumn<QByteArray>("invoke");
    QTest::addColumn<QVariantList>("received");
    QTest::newRow("one int") << QByteArray("function='take' arguments='int(7)'") << QVariantList{7};
    QTest::newRow("stops at the first empty piece") << QByteArray("function='take' arguments='int(1),,int(2)'")
                                                    << QVariantList{1};
    QTest::newRow("two ints") << QByteArray("function='take' arguments='int(1),int(2)'") << QVariantList{1, 2};
    QTest::newRow("several types")
        << QByteArray("function='takeMany' arguments='QString(hello),qreal(2.5),bool(true),"
                      "QColor(#00ff0080),uint(7)'")
        << QVariantList{QStringLiteral("hello"), 2.5, true, QColor(0, 255, 0, 128), 7u};
    QTest::newRow("objects from the registry")
        << QByteArray("function='takeObjects' arguments='QObject*(s),QWidget*(s)'") << QVariantList{};
    QTest::newRow("variant") << QByteArray("function='takeVariant' arguments='QVariant(text)'")
                             << QVariantList{QStringLiteral("text")};
    QTest::newRow("ten") << QByteArray("function='takeTen' arguments='int(1),int(2),int(3),int(4),int(5),int(6),"
                                       "int(7),int(8),int(9),int(10)'")
                         << QVariantList{1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    QTest::newRow("value with parentheses") << QByteArray("function='take' arguments='int((4))'")
                                            << QVariantList{};
}

void tst_ZXmlUI::invokeArguments()
{
    QFETCH(QByteArray, invoke);
    QFETCH(QVariantList, received);
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='r'><Probe objectName='s' objectArgument=''/>"
                                          "<r:invoke " + invoke + "/></Probe>"),
                                     &target));
    auto *r = find<Probe>(&target, QStringLiteral("r"));
    const QByteArray row = QTest::currentDataTag();
    if (row == "objects from the registry") {
        QCOMPARE(r->received.size(), 2);
        QCOMPARE(r->received[0].value<QObject *>(), find<Probe>(&target, QStringLiteral("s")));
        QCOMPARE(r->received[1].value<QWidget *>(), nullptr); // a Probe is no QWidget
        QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));
        return;
    }
    if (row == "value with parentheses") {
        // The value runs to the last ")": "(4)" is no int.
        QCOMPARE(r->received, QVariantList());
        QCOMPARE(diag.of(Diagnostic::InvocationFailed).size(), 1);
        return;
    }
    QCOMPARE(r->received, received);
    QVERIFY2(diag.list.isEmpty(), qPrintable(diag.dump()));
}

void tst_ZXmlUI::invokeFailures_data()
{
    QTest::addColumn<QByteArray>("invoke");
    QTest::addColumn<QString>("message");
    QTest::newRow("no such method") << QByteArray("function='nothing' arguments='int(1)'")
                                    << "Probe has no invokable method nothing(int)";
    QTest::newRow("wrong argument type") << QByteArray("function='take' arguments='QString(1)'")
                                         << "no invokable method take(QString)";
    QTest::newRow("unknown type") << QByteArray("function='take' arguments='Whatever(1)'") << "unknown type Whatever";
    QTest::newRow("not type(value)") << QByteArray("function='take' arguments='int 5'") << "not written type(value)";
    QTest::newRow("value does not read") << QByteArray("function='take' arguments='int(five)'")
                                         << "\"five\" is not a valid int";
    // "," separates arguments, so a size has no way to be written.
    QTest::newRow("converter fallback") << QByteArray("function='take' arguments='QSize(3;4)'")
                                        << "\"3;4\" is not a valid QSize";
    QTest::newRow("eleven arguments")
        << QByteArray("function='takeTen' arguments='int(1),int(2),int(3),int(4),int(5),int(6),int(7),int(8),"
                      "int(9),int(10),int(11)'")
        << "more than ten arguments";
}

void tst_ZXmlUI::invokeFailures()
{
    QFETCH(QByteArray, invoke);
    QFETCH(QString, message);
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='r'>\n  <r:invoke " + invoke + "/></Probe>"), &target));
    QCOMPARE(find<Probe>(&target, QStringLiteral("r"))->received, QVariantList());
    const auto failed = diag.of(Diagnostic::InvocationFailed);
    QCOMPARE(failed.size(), 1);
    QVERIFY2(failed[0].message.contains(message), qPrintable(failed[0].message));
    QVERIFY(failed[0].message.startsWith(QLatin1String("<r:invoke>: ")));
    QCOMPARE(failed[0].line, 2);
    QCOMPARE(failed[0].column, 3);
}

void tst_ZXmlUI::dataXml()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='a'><list:data value='1'/></Probe>"
                                          "<Probe objectName='b'><list:data model='xml' value='2' connect='queue'/></Probe>"
                                          "<Probe objectName='c'><list:data function='setNote' value='3'/></Probe>"),
                                     &target));
    auto *a = find<Probe>(&target, QStringLiteral("a"));
    QCOMPARE(a->dataCalls, 1);
    QCOMPARE(a->xmlName, QStringLiteral("list:data"));
    QCOMPARE(a->xmlValue, QStringLiteral("1"));
    // Queued delivery would outlive the element: it is made directly.
    auto *b = find<Probe>(&target, QStringLiteral("b"));
    QCOMPARE(b->xmlValue, QStringLiteral("2"));
    QCOMPARE(diag.of(Diagnostic::DataFailed).size(), 2);
    QVERIFY(diag.of(Diagnostic::DataFailed)[1].message.contains(QLatin1String("no invokable method setNote(const XMLNode*)")));
    QCOMPARE(find<Probe>(&target, QStringLiteral("c"))->dataCalls, 0);
}

void tst_ZXmlUI::dataVariant()
{
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='a'>"
                                          "  <m:data model='variant'>"
                                          "    <item text='one' icon='i.png'><sub x='1'/></item>"
                                          "    <other/>"
                                          "  </m:data>"
                                          "  <m:data model='variant' function='receiveList' connect='direct'/>"
                                          "</Probe>"),
                                     &target));
    auto *a = find<Probe>(&target, QStringLiteral("a"));
    // setData(QVariant) got the list first; receiveList then an empty list.
    QCOMPARE(a->dataCalls, 1);
    QCOMPARE(a->variant.metaType(), QMetaType::fromType<QVariantList>());
    QCOMPARE(a->variant.toList(), QVariantList());
    ZXmlUI::widgetFromMemory(tree("<Probe objectName='b'><m:data model='variant'>"
                                  "<item text='one' icon='i.png'><sub x='1'/></item><other/></m:data></Probe>"),
                             &target);
    auto *b = find<Probe>(&target, QStringLiteral("b"));
    const QVariantList list = b->variant.toList();
    QCOMPARE(list.size(), 2);
    const QVariantMap first = list[0].toMap();
    QCOMPARE(first.keys(), QStringList{QStringLiteral("item")});
    const QVariantMap attrs = first.value(QStringLiteral("item")).toMap();
    QCOMPARE(attrs.value(QStringLiteral("text")), QVariant(QStringLiteral("one")));
    QCOMPARE(attrs.value(QStringLiteral("icon")), QVariant(QStringLiteral("i.png")));
    QVERIFY(!attrs.contains(QStringLiteral("children")));
    QCOMPARE(attrs.size(), 2);
    QCOMPARE(list[1].toMap().value(QStringLiteral("other")).toMap(), QVariantMap());
}

void tst_ZXmlUI::dataFailures()
{
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='a'><m:data model='json'/><m:junk/><m:/><:data/></Probe>"),
                                     &target));
    QCOMPARE(find<Probe>(&target, QStringLiteral("a"))->dataCalls, 1); // only ":data"
    QCOMPARE(diag.of(Diagnostic::DataFailed).size(), 1);
    QCOMPARE(diag.of(Diagnostic::UnknownAction).size(), 2);
    QCOMPARE(diag.list.size(), 3);
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
        "<NoHelper/>")));
    QVERIFY(w);
    auto *ok = find<Probe>(w.get(), QStringLiteral("ok"));
    auto *r = find<Probe>(w.get(), QStringLiteral("r"));
    Q_EMIT ok->clicked();
    QCOMPARE(r->clicks, 1);
    Q_EMIT ok->valueChanged(4);
    QCOMPARE(r->received, QVariantList{4});

    // Helpers stay as children of the window (or of their parent helper).
    const QList<ZHelper *> made = w->findChildren<ZHelper *>();
    QCOMPARE(made.size(), 7);
    QVERIFY(!w->findChild<ZHelper *>(QStringLiteral("neverMade")));

    // ZHelper steps through direct children only: "r" is not one of the
    // window's, while ZFindChild finds it at any depth.
    const auto failed = diag.of(Diagnostic::HelperFailed);
    QCOMPARE(failed.size(), 2);
    QVERIFY(failed[0].message.contains(QLatin1String("\"nowhere\"")));
    QVERIFY(failed[0].message.contains(QLatin1String("nested helpers are skipped")));
    QVERIFY(failed[1].message.startsWith(QLatin1String("<ZSignalConnector>: targetPath \"r\" names no object")));
    QCOMPARE(diag.of(Diagnostic::UnknownHelper).size(), 1);
}

void tst_ZXmlUI::helperFailureSkipsNested()
{
    ZHelper base;
    QVERIFY(!base.execute()); // no root
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

    // A failing helper's children never run, so their effect is absent.
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree("<Probe objectName='p'/>",
                                          "<ZSignalConnector targetPath='p' signal='none()' slot='onClicked()'>"
                                          "  <ZSignalConnector targetPath='' signal='clicked()' slot='onClicked()'/>"
                                          "</ZSignalConnector>"),
                                     &target));
    auto *p = find<Probe>(&target, QStringLiteral("p"));
    Q_EMIT p->clicked();
    QCOMPARE(p->clicks, 0);
    QCOMPARE(diag.of(Diagnostic::HelperFailed).size(), 1);
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
    QCOMPARE(find<Probe>(&target, QStringLiteral("p"))->received, (QVariantList{1, 2}));
    auto *q = find<Probe>(&target, QStringLiteral("q"));
    QCOMPARE(q->received.value(0).value<QObject *>(), q);
    const auto failed = diag.of(Diagnostic::HelperFailed);
    QCOMPARE(failed.size(), 2);
    QVERIFY(failed[0].message.contains(QLatin1String("no invokable method missing()")));
    QVERIFY(failed[1].message.contains(QLatin1String("no method given")));
}

void tst_ZXmlUI::skinAppliesToSubclass()
{
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin>"
                                        "  <ZWidget name='wide' fixWidth='33' margins='1,2,3,4' inner.fixHeight='5'/>"
                                        "</uiskin>")));
    Probe probe; // a ZWidget subclass
    probe.setSkinName(QStringLiteral("wide"));
    QCOMPARE(probe.fixWidth(), 33.0);
    QCOMPARE(probe.margins(), QMargins(1, 2, 3, 4));
    QCOMPARE(qobject_cast<ZWidget *>(probe.inner())->fixHeight(), 5.0);
    // Through the theme, as windows and other objects use it.
    ZWidget plain;
    ZTheme::setSkinName(&plain, QStringLiteral("wide"));
    QCOMPARE(plain.fixWidth(), 33.0);
}

void tst_ZXmlUI::skinRefusedForUnrelatedClass()
{
    Diagnostics diag; // before initSkin, which notes where skins are defined only then
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin>\n<Probe name='probe' fixWidth='33' note='n'/></uiskin>")));
    ZWidget base; // not a Probe
    base.setSkinName(QStringLiteral("probe"));
    QCOMPARE(base.fixWidth(), -1.0);
    ZSpacer spacer;
    spacer.setSkinName(QStringLiteral("probe"));
    QCOMPARE(spacer.fixWidth(), -1.0);
    QCOMPARE(diag.of(Diagnostic::SkinClassMismatch).size(), 2);
    QCOMPARE(diag.list[0].line, 2); // where the skin was defined
    QVERIFY(diag.list[0].message.contains(QLatin1String("skin \"probe\" is for Probe")));

    spacer.setSkinName(QStringLiteral("unknown"));
    QCOMPARE(diag.of(Diagnostic::UnknownSkin).size(), 1);
    spacer.setSkinName(QString());
    QCOMPARE(diag.list.size(), 3);
}

void tst_ZXmlUI::skinFromDocumentAttribute()
{
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin><ZWindow name='framed' sceneMargins='4,4,4,4'/>"
                                        "<ZSpacer name='tall' fixHeight='40' objectName='skinned'/></uiskin>")));
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(tree("<TestWindow skinName='framed'>"
                                                             "<ZSpacer objectName='s' skinName='tall'/></TestWindow>")));
    QVERIFY(w);
    QCOMPARE(w->sceneMargins(), QMargins(4, 4, 4, 4));
    auto *s = find<ZSpacer>(w.get(), QStringLiteral("skinned"));
    QVERIFY(s);
    QCOMPARE(s->fixHeight(), 40.0);
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
    QCOMPARE(diag.of(Diagnostic::UnknownClass).size(), 2); // helpers have no skins
    QCOMPARE(diag.of(Diagnostic::UnknownSkin).size(), 1);  // the nameless one
    // initSkin empties the store: "keep" is gone; the later "twice" won.
    ZWidget v;
    v.setSkinName(QStringLiteral("keep"));
    QCOMPARE(v.fixWidth(), -1.0);
    v.setSkinName(QStringLiteral("twice"));
    QCOMPARE(v.fixWidth(), -1.0);
    QCOMPARE(v.fixHeight(), 3.0);
}

void tst_ZXmlUI::skinSettingSkinNameDoesNotLoop()
{
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin><ZWidget name='a' skinName='b' fixWidth='1'/>"
                                        "<ZWidget name='b' skinName='a' fixHeight='2'/></uiskin>")));
    // "a" chains to "b", which chains back to "a": that one is not applied again.
    Diagnostics diag;
    ZWidget w;
    w.setSkinName(QStringLiteral("a"));
    QCOMPARE(w.fixWidth(), 1.0);
    QCOMPARE(w.fixHeight(), 2.0);
    QCOMPARE(w.skinName(), QStringLiteral("a"));
    QCOMPARE(diag.list.size(), 1);
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

void tst_ZXmlUI::parseErrorPosition()
{
    Diagnostics diag;
    QVERIFY(!ZXmlUI::windowFromMemory("<uitree>\n  <ZWindow>\n    <a b=c/>\n</uitree>"));
    QCOMPARE(diag.list.size(), 1);
    QCOMPARE(diag.list[0].kind, Diagnostic::ParseError);
    QCOMPARE(diag.list[0].line, 3);
    QCOMPARE(diag.list[0].column, 10);
    QVERIFY(!diag.list[0].message.isEmpty());

    // Unclosed elements are a warning: the window still loads.
    diag.list.clear();
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory("<uitree><ZWindow objectName='w'>"));
    QVERIFY(w);
    QCOMPARE(diag.list.size(), 1);
    QCOMPARE(diag.list[0].kind, Diagnostic::ParseWarning);
}

void tst_ZXmlUI::elementPositions()
{
    // Columns count characters, not bytes; a byte-order mark is not counted.
    const QByteArray text = "\xEF\xBB\xBF<uitree>\n<ZSpacer>\n\t<Unknown1/>\n  <ZSpacer title='\xC3\xA9\xC3\xA9'><Unknown2/>"
                            "</ZSpacer></ZSpacer></uitree>";
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(text, &target));
    QCOMPARE(diag.list.size(), 2);
    QCOMPARE(diag.list[0].line, 3);
    QCOMPARE(diag.list[0].column, 2);
    QCOMPARE(diag.list[1].line, 4);
    QCOMPARE(diag.list[1].column, 23);
    QVERIFY(diag.list[1].file.isEmpty());

    // The document model reports the same positions.
    const XMLNode doc = XMLNode::parseString(text.constData());
    XMLNode copy = doc;
    const XMLNode unknown2 = copy.getChildNodeByPath("uitree/ZSpacer/ZSpacer/Unknown2", 0);
    int line = 0, column = 0;
    QVERIFY(unknown2.sourcePosition(text.constData(), &line, &column));
    QCOMPARE(line, 4);
    QCOMPARE(column, 23);
    QVERIFY(!unknown2.sourcePosition("short", &line, &column));
    QCOMPARE(doc.sourceOffset(), -1);
    QCOMPARE(XMLNode::createXMLTopNode("made").sourceOffset(), -1);
    QCOMPARE(unknown2.deepCopy().sourceOffset(), unknown2.sourceOffset());
}

void tst_ZXmlUI::deepNesting()
{
    constexpr int levels = 100000;
    QByteArray text = "<uitree>";
    text.reserve(levels * 21 + 20);
    for (int i = 0; i < levels; ++i)
        text += "<ZSpacer>";
    for (int i = 0; i < levels; ++i)
        text += "</ZSpacer>";
    text += "</uitree>";

    Diagnostics diag;
    ZWidget target;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(ZXmlUI::widgetFromMemory(text, &target));
    QCOMPARE(depthBelow(&target), ZXmlUI::MaximumDepth);
    QCOMPARE(diag.list.size(), 1);
    QCOMPARE(diag.list[0].kind, Diagnostic::DepthLimit);
    QCOMPARE(diag.list[0].column, 1 + 8 + 9 * ZXmlUI::MaximumDepth);

    // The window load too, and an unknown class whose subtree is as deep.
    diag.list.clear();
    std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory("<uitree><ZWindow>" + text.mid(8, text.size() - 17)
                                                        + "</ZWindow></uitree>"));
    QVERIFY(w);
    QCOMPARE(depthBelow(w->rootWidget()), ZXmlUI::MaximumDepth);
    QVERIFY(!ZXmlUI::windowFromMemory("<uitree><Deep>" + text.mid(8, text.size() - 17) + "</Deep></uitree>"));
    QVERIFY(timer.elapsed() < 8000);
}

void tst_ZXmlUI::deepHelperNesting()
{
    constexpr int levels = 100000;
    QByteArray helpers;
    for (int i = 0; i < levels; ++i)
        helpers += "<ZFindChild>";
    for (int i = 0; i < levels; ++i)
        helpers += "</ZFindChild>";
    Diagnostics diag;
    ZWidget target;
    QVERIFY(ZXmlUI::widgetFromMemory(tree(QByteArray(), helpers), &target));
    QCOMPARE(target.findChildren<ZHelper *>().size(), ZXmlUI::MaximumDepth);
    QCOMPARE(diag.of(Diagnostic::DepthLimit).size(), 1);
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
    QVERIFY(ZXmlUI::widgetFromMemory(
        tree("<Probe objectName='before' objectArgument=''/>"
             "<Probe objectName='r1'><r:event object='before' signal='clicked()' slot='onClicked()'/>"
             "  <r:invoke function='take' arguments='int(1)'/></Probe>"
             "<Nester objectName='nester'/>"
             "<Probe objectName='after' objectArgument=''/>"
             "<Probe objectName='r2'><r:event object='after' signal='clicked()' slot='onClicked()'/>"
             "  <r:event object='before' signal='clicked()' slot='onClicked()'/></Probe>"),
        &target));
    QVERIFY(find<Nester>(&target, QStringLiteral("nester"))->nestedResult);
    Q_EMIT find<Probe>(&target, QStringLiteral("innerSender"))->clicked();
    QCOMPARE(find<Probe>(&target, QStringLiteral("innerReceiver"))->clicks, 1);

    Q_EMIT find<Probe>(&target, QStringLiteral("before"))->clicked();
    Q_EMIT find<Probe>(&target, QStringLiteral("after"))->clicked();
    auto *r1 = find<Probe>(&target, QStringLiteral("r1"));
    auto *r2 = find<Probe>(&target, QStringLiteral("r2"));
    QCOMPARE(r1->clicks, 0);                 // its connection was dropped
    QCOMPARE(r1->received, QVariantList());  // and its call
    QCOMPARE(r2->clicks, 1);                 // "after" only: "before" was forgotten
    QCOMPARE(diag.of(Diagnostic::PendingDropped).size(), 1);
    QCOMPARE(diag.of(Diagnostic::ConnectionFailed).size(), 1);
}

void tst_ZXmlUI::randomDocuments()
{
    // Documents of the toolkit's vocabulary with random structure and
    // values, then the same with random bytes changed: each loads or fails,
    // nothing more. (ZColorTable is left out: it renders an image as large
    // as itself, and huge sizes are what these documents are made of.)
    static const char *const elements[] = {"ZSpacer", "ZWidget", "Probe", "Nester", "Nope",
                                           "a:data", "a:event", "a:invoke", "a:odd", "ZWindow", "TestWindow"};
    static const char *const names[] = {
        "objectName", "objectArgument", "layout", "margins", "fixWidth", "fixSize", "spacing", "anchor",
        "backgroundColor", "backgroundGradient", "alignment", "dragPolicy", "skinName", "inner.fixHeight",
        "nothing.x", "titlebar.margins", "function", "model", "arguments", "object", "signal", "slot", "connect",
        "note", "tag", "visible", "opacity", "zValue", "pos", "size", "xRotate", "sizeToChild", "a.b.c"};
    static const char *const values[] = {
        "", "0", "-1", "1e308", "nan", "VBox", "Flow", "Anchor", "1,2,3,4", "#ff000080", "Left:10|Top:x",
        "Start:0,0|Final:0,1|Color:0:red", "take", "setData", "variant", "int(1),QObject*(x)", "clicked()",
        "queue", "x", "AlignLeft|Bogus", "wide", "&lt;&amp;", "\xC3\xA9", "99999999999999999999"};
    Nester::s_inner = tree("<Probe objectArgument=''/>");
    QVERIFY(ZXmlUI::initSkin(QByteArray("<uiskin><ZWidget name='wide' fixWidth='1e9' skinName='wide'/></uiskin>")));

    QRandomGenerator random(20240521);
    const auto pick = [&random](const auto &array) {
        return array[random.bounded(int(sizeof(array) / sizeof(array[0])))];
    };
    int loaded = 0;
    for (int round = 0; round < 150; ++round) {
        QByteArray text = "<uitree><TestWindow>";
        std::vector<QByteArray> open;
        const int count = 1 + random.bounded(25);
        for (int i = 0; i < count; ++i) {
            const QByteArray element = pick(elements);
            text += '<' + element;
            for (int a = random.bounded(4); a > 0; --a)
                text += QByteArray(" ") + pick(names) + "=\"" + pick(values) + '"';
            if (random.bounded(2)) {
                text += '>';
                open.push_back(element);
            } else {
                text += "/>";
            }
            if (!open.empty() && random.bounded(3) == 0) {
                text += "</" + open.back() + '>';
                open.pop_back();
            }
        }
        while (!open.empty()) {
            text += "</" + open.back() + '>';
            open.pop_back();
        }
        text += "</TestWindow></uitree><uihelper><ZFindChild targetPath='x'><ZMethodInvoker method='take'/>"
                "</ZFindChild><ZSignalConnector signal='clicked()' slot='close()'/></uihelper>";

        for (int variant = 0; variant < 2; ++variant) {
            QByteArray doc = text;
            if (variant) {
                for (int k = random.bounded(8); k >= 0; --k)
                    doc[random.bounded(int(doc.size()))] = char(random.bounded(256));
            }
            std::unique_ptr<ZWindow> w(ZXmlUI::windowFromMemory(doc));
            // Well-formed text with a known window class always gives a window.
            if (!variant)
                QVERIFY2(w, doc.constData());
            ZWidget target;
            ZXmlUI::widgetFromMemory(doc, &target);
            loaded += bool(w);
            QCoreApplication::processEvents();
        }
    }
    QVERIFY(loaded > 0);
}

QTEST_MAIN(tst_ZXmlUI)
#include "tst_zxmlui.moc"
