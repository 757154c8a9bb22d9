#include "platform/store/PropertyList.h"

#include "tests/platform/store/RandomTexts.h"

#include <gtest/gtest.h>

namespace {

const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<!DOCTYPE plist>\n";

std::optional<PropertyValue> read(const QByteArray& body)
{
    return readPropertyList(head + "<plist version=\"1.0\">" + body + "</plist>\n");
}

PropertyValue text(const QString& value)
{
    return { value };
}

PropertyArray nested(int depth)
{
    PropertyArray array;
    for (int i = 1; i < depth; ++i)
        array = PropertyArray { { array } };
    return array;
}

TEST(PropertyListWriter, WritesProfileList)
{
    const PropertyDictionaries list { { { u"SSID"_qs, u"a<b & c"_qs }, { u"BSSID"_qs, QString() } }, {} };
    const QByteArray expected = head
        + "<plist version=\"1.0\">\n"
          "\t<array>\n"
          "\t\t<dict>\n"
          "\t\t\t<key>SSID</key>\n"
          "\t\t\t<string>a&lt;b &amp; c</string>\n"
          "\t\t\t<key>BSSID</key>\n"
          "\t\t\t<string/>\n"
          "\t\t</dict>\n"
          "\t\t<dict/>\n"
          "\t</array>\n"
          "</plist>\n";
    EXPECT_EQ(writePropertyList(propertyValueOf(list)).toStdString(), expected.toStdString());
}

TEST(PropertyListWriter, WritesCarriageReturnAsReference)
{
    const QByteArray bytes = writePropertyList(text(u"a\r\nb"_qs));
    EXPECT_TRUE(bytes.contains("<string>a&#13;\nb</string>")) << bytes.constData();
    EXPECT_EQ(*readPropertyList(bytes), text(u"a\r\nb"_qs));
}

TEST(PropertyListWriter, RejectsValuesNestedTooDeep)
{
    EXPECT_FALSE(writePropertyList({ nested(maxPropertyListDepth) }).isEmpty());
    EXPECT_TRUE(writePropertyList({ nested(maxPropertyListDepth + 1) }).isEmpty());
}

TEST(PropertyList, RoundTripsAnyText)
{
    RandomTexts texts(3);
    for (int i = 0; i < 1000; ++i) {
        const auto list = texts.dictionaries([&texts] { return texts.any(); });
        const auto root = readPropertyList(writePropertyList(propertyValueOf(list)));
        ASSERT_TRUE(root);
        EXPECT_EQ(dictionariesOf(*root), list);
    }
}

TEST(PropertyList, RoundTripsEveryKindOfValue)
{
    const QDateTime date(QDate(2006, 2, 28), QTime(23, 59, 1), Qt::UTC);
    const PropertyTree tree { { u"t"_qs, { true } }, { u"f"_qs, { false } }, { u"i"_qs, { qint64 { -7 } } },
        { u"r"_qs, { 0.1 } }, { u"d"_qs, { date } }, { u"b"_qs, { QByteArray("\0\xFF\n", 3) } },
        { u"a"_qs, { PropertyArray { text(u"x"_qs), { PropertyArray() }, { PropertyTree() } } } },
        { u"none"_qs, { QByteArray() } } };
    const PropertyValue root { tree };
    EXPECT_EQ(readPropertyList(writePropertyList(root)), root);
}

TEST(PropertyListReader, ReadsInfoPlist)
{
    const auto root = read("<dict>\n<key>CFBundleShortVersionString</key><string>1.4.2</string>\n"
                           "<!-- built by hand -->\n<key>LSRequiresCarbon</key><true/>\n"
                           "<key>Count</key><integer> 12 </integer><key>Ratio</key><real>1.5e3</real>\n"
                           "<key>Built</key><date>2006-02-28T23:59:01Z</date><key>Icon</key><data>\n\tAAEC\n</data>"
                           "</dict>");
    ASSERT_TRUE(root);
    ASSERT_TRUE(root->valueOf(u"CFBundleShortVersionString"));
    EXPECT_EQ(*root->valueOf(u"CFBundleShortVersionString")->text(), u"1.4.2"_qs);
    EXPECT_EQ(*root->valueOf(u"LSRequiresCarbon"), PropertyValue { true });
    EXPECT_EQ(*root->valueOf(u"Count"), PropertyValue { qint64 { 12 } });
    EXPECT_EQ(*root->valueOf(u"Ratio"), PropertyValue { 1500.0 });
    EXPECT_EQ(*root->valueOf(u"Built"), (PropertyValue { QDateTime({ 2006, 2, 28 }, { 23, 59, 1 }, Qt::UTC) }));
    EXPECT_EQ(*root->valueOf(u"Icon"), (PropertyValue { QByteArray("\0\1\2", 3) }));
    EXPECT_EQ(root->valueOf(u"Missing"), nullptr);
    EXPECT_EQ(root->valueOf(u"Count")->valueOf(u"Count"), nullptr);
}

TEST(PropertyListReader, AcceptsDocumentWithoutOptionalHeader)
{
    EXPECT_EQ(readPropertyList("<plist><string>a</string></plist>"), text(u"a"_qs));
    EXPECT_EQ(
        readPropertyList("<?xml version=\"1.0\"?><!DOCTYPE plist><plist version='1.0'><string>a</string></plist>"),
        text(u"a"_qs));
    EXPECT_EQ(readPropertyList("\xEF\xBB\xBF<plist><string>a</string></plist>"), text(u"a"_qs));
}

TEST(PropertyListReader, JoinsPartsOfText)
{
    EXPECT_EQ(read("<string>a<!-- b -->c<![CDATA[<d>&]]>&lt;&gt;&amp;&quot;&apos;&#x41;&#13;</string>"),
        text(u"ac<d>&<>&\"'A\r"_qs));
    EXPECT_EQ(read("<string> \n </string>"), text(u" \n "_qs));
    EXPECT_EQ(read("<string/>"), text(QString()));
    EXPECT_EQ(read("<string>a\r\nb\rc</string>"), text(u"a\nb\nc"_qs)); // XML normalises line ends
}

class InvalidBody : public testing::TestWithParam<const char*> { };

TEST_P(InvalidBody, IsRejected)
{
    EXPECT_FALSE(read(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(PropertyListReader, InvalidBody,
    testing::Values("", "text", "<string>a", "<string>a</string><string>b</string>", "<string a='1'>b</string>",
        "<string>a<b/></string>", "<unknown/>", "<key>a</key>", "<String>a</String>", "<plist><string/></plist>",
        "<string>a</integer>", "<string>&undeclared;</string>", "<string>a & b</string>", "<string>\x01</string>",
        "<string>\xC3</string>", "<string>\xFF\xFE</string>", "<string>&#1;</string>", "<string>&#0;</string>",
        "<string>&#xD800;</string>", "<array>a</array>", "<array><key>a</key></array>", "<array><string/>",
        "<dict>a</dict>", "<dict><string/></dict>", "<dict><key>a</key></dict>",
        "<dict><key>a</key><key>b</key></dict>", "<dict><key>a</key><string/><string/></dict>",
        "<dict><key>a</key>b<string/></dict>", "<dict><key>a</key><string/><key>a</key><string/></dict>",
        "<dict><key a='1'>a</key><string/></dict>", "<integer/>", "<integer>1.5</integer>", "<integer>0x1</integer>",
        "<integer>9223372036854775808</integer>", "<integer>1 2</integer>", "<real>one</real>", "<real>nan</real>",
        "<real>1e999</real>", "<true>yes</true>", "<true><false/></true>", "<date>yesterday</date>",
        "<date>2006-02-30T00:00:00Z</date>", "<date>2006-02-28</date>", "<data>A</data>", "<data>A*==</data>",
        "<![CDATA[ ]]><string/>", "<array><![CDATA[ ]]></array>"));

class InvalidDocument : public testing::TestWithParam<QByteArray> { };

TEST_P(InvalidDocument, IsRejected)
{
    EXPECT_FALSE(readPropertyList(GetParam())) << GetParam().constData();
}

const QByteArray good = "<plist version=\"1.0\"><string>a</string></plist>";

INSTANTIATE_TEST_SUITE_P(PropertyListReader, InvalidDocument,
    testing::Values(QByteArray(), QByteArray(" \n"), QByteArray("bplist00\xD0"), good + "x", good + "<a/>", good + good,
        good + QByteArray("\0", 1), QByteArray("\0", 1) + good, good.chopped(1), QByteArray("x") + good,
        " <?xml version=\"1.0\"?>" + good, "<?xml version=\"1.1\"?>" + good,
        "<?xml version=\"1.0\" encoding=\"none\"?>" + good, "<?xml version=\"1.0\" encoding=\"IBM037\"?>" + good,
        QByteArray("<plist version=\"2.0\"><string/></plist>"),
        QByteArray("<plist version=\"1.0\" a=\"b\"><string/></plist>"), QByteArray("<plist/>"),
        QByteArray("<list><string/></list>"), QByteArray("<string/>"), "<!DOCTYPE list>" + good,
        "<!DOCTYPE plist []>" + good, "<!DOCTYPE plist [<!ENTITY a \"b\">]>" + good,
        "<!DOCTYPE plist [<!ATTLIST string a CDATA \"b\">]>" + good,
        QByteArray("<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><string>&a;</string></plist>"),
        QByteArray("<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/passwd\">]><plist><string>&a;</string></plist>"),
        head + "<plist><string>&a;</string></plist>", QByteArray("\xFF\xFE<\0p\0", 6)));

// Nested entities would expand to 1,000,000,000,000 characters.
TEST(PropertyListReader, DoesNotExpandDeclaredEntities)
{
    QByteArray document = "<!DOCTYPE plist [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ";";
        document += "<!ENTITY e" + QByteArray::number(i) + " \"" + inner.repeated(10) + "\">";
    }
    EXPECT_FALSE(readPropertyList(document + "]><plist><string>&e11;</string></plist>"));
}

TEST(PropertyListReader, RejectsDocumentsNestedTooDeep)
{
    const auto arrays
        = [](int depth) { return QByteArray("<array>").repeated(depth) + QByteArray("</array>").repeated(depth); };
    EXPECT_TRUE(read(arrays(maxPropertyListDepth)));
    EXPECT_FALSE(read(arrays(maxPropertyListDepth + 1)));
    EXPECT_FALSE(read(QByteArray("<array>").repeated(1000000)));
    EXPECT_FALSE(read(QByteArray("<dict><key>a</key>").repeated(500000)));
}

TEST(PropertyListReader, RejectsDocumentsAboveSizeLimit)
{
    const auto document = [](qsizetype size) {
        const QByteArray start = "<plist><string>";
        const QByteArray end = "</string></plist>";
        return start + QByteArray(size - start.size() - end.size(), 'a') + end;
    };
    EXPECT_TRUE(readPropertyList(document(maxPropertyListSize)));
    EXPECT_FALSE(readPropertyList(document(maxPropertyListSize + 1)));
}

TEST(PropertyListReader, RejectsDocumentsWithTooManyValues)
{
    const auto document
        = [](int values) { return "<array>" + QByteArray("<true/>").repeated(values - 1) + "</array>"; };
    EXPECT_TRUE(read(document(maxPropertyListValues)));
    EXPECT_FALSE(read(document(maxPropertyListValues + 1)));
}

// A tag of this size takes the XML reader minutes.
TEST(PropertyListReader, RejectsOverlongTagsBeforeTheyAreParsed)
{
    QByteArray attributes;
    for (int i = 0; i < 500000; ++i)
        attributes += " a" + QByteArray::number(i) + "=\"\"";
    EXPECT_FALSE(read("<dict" + attributes + "/>"));
    EXPECT_FALSE(read("<dict" + attributes));
    EXPECT_TRUE(read("<dict" + QByteArray(maxPropertyListTag - 7, ' ') + "/>"));
    EXPECT_FALSE(read("<dict" + QByteArray(maxPropertyListTag - 6, ' ') + "/>"));
    EXPECT_TRUE(read("<string><!-- " + QByteArray(maxPropertyListTag, 'a') + " --></string>"));
}

TEST(PropertyListReader, RejectsTruncatedDocuments)
{
    const QByteArray whole
        = writePropertyList(propertyValueOf(PropertyDictionaries { { { u"SSID"_qs, u"a\r\u20AC"_qs } } }));
    ASSERT_TRUE(readPropertyList(whole));
    for (qsizetype size = 0; size < whole.size() - 1; ++size) // the last byte is a line feed
        EXPECT_FALSE(readPropertyList(whole.first(size))) << size;
}

TEST(DictionariesOf, AcceptsOnlyListsOfDictionaries)
{
    EXPECT_EQ(dictionariesOf(*read("<array/>")), PropertyDictionaries());
    EXPECT_TRUE(areDictionariesOfTexts(*read("<array/>")));
    for (const QByteArray body : { "<dict/>", "<string/>", "<array><string/></array>", "<array><dict/><array/></array>",
             "<array><dict/><true/></array>" }) {
        EXPECT_FALSE(dictionariesOf(*read(body))) << body.constData();
        EXPECT_FALSE(areDictionariesOfTexts(*read(body))) << body.constData();
    }
}

TEST(DictionariesOf, ConvertsNumbersAndBooleansToText)
{
    const auto root = read("<array><dict><key>a</key><integer> -7 </integer><key>b</key><true/><key>c</key><false/>"
                           "<key>d</key><real>0.1</real><key>e</key><real>2347.0</real><key>f</key><real>1e6</real>"
                           "<key>g</key><string>06</string></dict></array>");
    const PropertyDictionary expected { { u"a"_qs, u"-7"_qs }, { u"b"_qs, u"1"_qs }, { u"c"_qs, u"0"_qs },
        { u"d"_qs, u"0.1"_qs }, { u"e"_qs, u"2347"_qs }, { u"f"_qs, u"1000000"_qs }, { u"g"_qs, u"06"_qs } };
    EXPECT_EQ(dictionariesOf(*root), PropertyDictionaries { expected });
    EXPECT_TRUE(areDictionariesOfTexts(*root));
}

TEST(DictionariesOf, SkipsValuesWithoutText)
{
    for (const QByteArray value : { "<array/>", "<dict/>", "<data/>", "<date>2006-02-28T23:59:01Z</date>" }) {
        SCOPED_TRACE(value.constData());
        const auto root = read("<array><dict><key>a</key><string>x</string><key>b</key>" + value
            + "<key>c</key><integer>1</integer></dict><dict/></array>");
        EXPECT_EQ(dictionariesOf(*root), (PropertyDictionaries { { { u"a"_qs, u"x"_qs }, { u"c"_qs, u"1"_qs } }, {} }));
        EXPECT_FALSE(areDictionariesOfTexts(*root));
    }
}

} // namespace
