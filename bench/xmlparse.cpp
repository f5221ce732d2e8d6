// Parse throughput of XMLNode against pugixml, tinyxml2 and QDomDocument on
// a generated uitree document of about 3 MB. Each figure is the median of
// several runs, each run parsing the text and freeing the document.

#include "benchutil.h"
#include "xmlnode.h"

#include <QByteArray>
#include <QDomDocument>
#include <pugixml.hpp>
#include <tinyxml2.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// Deterministic pseudo-random numbers, so that every run sees the same text.
struct Lcg
{
    unsigned long long s = 0x2545F4914F6CDD1DULL;
    unsigned next(unsigned n)
    {
        s = s * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<unsigned>(s >> 33) % n;
    }
};

const char *const controls[] = {"ZPushButton", "ZLabel", "ZLineEdit", "ZCheckBox", "ZImageItem", "ZTextItem"};
const char *const texts[] = {"OK", "Cancel", "Save &amp; close", "&lt;none&gt;", "\xe7\xa1\xae\xe5\xae\x9a",
                             "\xe5\x8f\x96\xe6\xb6\x88\xe6\x93\x8d\xe4\xbd\x9c", "Open file\xe2\x80\xa6",
                             "Size: 10 &quot;px&quot;"};
const char *const content[] = {"\xe8\xbf\x99\xe6\x98\xaf\xe4\xb8\x80\xe6\xae\xb5\xe8\xaf\xb4\xe6\x98\x8e\xe6\x96\x87"
                               "\xe5\xad\x97 &amp; some help text",
                               "Plain description of the control", "Line one &#x4E2D;&#25991; line two"};

constexpr int ControlCount = 20000;

std::string makeDocument()
{
    Lcg rng;
    std::string s;
    s.reserve(3200000);
    s += "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<uitree>\n";
    int n = 0;
    for (int w = 0; n < ControlCount; ++w) {
        s += "  <ZWindow objectName=\"window" + std::to_string(w) + "\" windowStyle=\"Dialog\">\n";
        for (int g = 0; g < 10 && n < ControlCount; ++g) {
            s += "    <ZSpacer layout=\"" + std::string(g % 2 ? "HBox" : "VBox") + "\" margins=\"4,4,4,4\">\n";
            for (int k = 0; k < 50 && n < ControlCount; ++k, ++n) {
                const char *cls = controls[rng.next(6)];
                s += "      <";
                s += cls;
                s += " objectName=\"control" + std::to_string(n) + "\"";
                s += " text=\"";
                s += texts[rng.next(8)];
                s += "\" fixWidth=\"" + std::to_string(40 + rng.next(200)) + "\"";
                s += " margins=\"" + std::to_string(rng.next(9)) + "," + std::to_string(rng.next(9)) + ","
                     + std::to_string(rng.next(9)) + "," + std::to_string(rng.next(9)) + "\"";
                s += " imagePath=\"skin/controls/" + std::string(cls) + "_" + std::to_string(rng.next(12))
                     + ".png\"";
                s += " toolTip=\"Tip for control " + std::to_string(n) + "\"";
                if (rng.next(4) == 0) {
                    s += ">";
                    s += content[rng.next(3)];
                    s += "</";
                    s += cls;
                    s += ">\n";
                } else {
                    s += "/>\n";
                }
            }
            s += "    </ZSpacer>\n";
        }
        s += "  </ZWindow>\n";
    }
    s += "</uitree>\n";
    return s;
}

[[noreturn]] void die(const char *what)
{
    std::fprintf(stderr, "xml-parse: %s failed to parse the document\n", what);
    std::exit(1);
}

} // namespace

int main()
{
    XMLNode::setGlobalOptions(char_encoding_UTF8, 1, 1, 1);
    const std::string doc = makeDocument();
    const double mb = static_cast<double>(doc.size()) / 1e6;
    const int runs = 15;

    const double zkit = medianSeconds(runs, [&] {
        XMLResults r;
        XMLNode top = XMLNode::parseString(doc.c_str(), nullptr, &r);
        if (r.error != eXMLErrorNone || top.getChildNode("uitree").nChildNode() == 0)
            die("zkit");
    });
    const double pugi = medianSeconds(runs, [&] {
        pugi::xml_document d;
        if (!d.load_buffer(doc.data(), doc.size()))
            die("pugixml");
    });
    const double tiny = medianSeconds(runs, [&] {
        tinyxml2::XMLDocument d;
        if (d.Parse(doc.data(), doc.size()) != tinyxml2::XML_SUCCESS)
            die("tinyxml2");
    });
    const double qdom = medianSeconds(runs, [&] {
        QDomDocument d;
        if (!d.setContent(QByteArray::fromRawData(doc.data(), static_cast<int>(doc.size()))))
            die("qdom");
    });

    std::printf("xml-parse zkit: %.1f MB/s\n", mb / zkit);
    std::printf("xml-parse pugixml: %.1f MB/s\n", mb / pugi);
    std::printf("xml-parse tinyxml2: %.1f MB/s\n", mb / tiny);
    std::printf("xml-parse qdom: %.1f MB/s\n", mb / qdom);
    std::printf("xml-parse ratio zkit/pugixml: %.2f\n", pugi / zkit);
    return 0;
}
