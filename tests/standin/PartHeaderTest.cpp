#include "standin/PartHeader.h"

#include <gtest/gtest.h>

namespace {

using standin::HeaderParameters;
using standin::PartHeader;

std::optional<std::string> fileName(const std::string& parameters)
{
    return PartHeader::parse("Content-Disposition: form-data; name=file; " + parameters).fileName;
}

TEST(PartHeader, acceptsUnquotedValues)
{
    const auto part = PartHeader::parse("Content-Disposition: form-data; name=file; filename=a.tess\r\n"
                                        "content-type: text/plain; charset=x");
    EXPECT_EQ(part.fieldName, "file");
    EXPECT_EQ(part.fileName, "a.tess");
    EXPECT_EQ(part.contentType, "text/plain; charset=x");
}

TEST(PartHeader, acceptsQuotedValues)
{
    EXPECT_EQ(PartHeader::parse(R"(Content-Disposition: form-data; name="file"; filename="a;b.tess")").fileName,
              "a;b.tess");
    EXPECT_EQ(PartHeader::parse(R"(Content-Disposition: form-data; name="file")").fieldName, "file");
}

TEST(PartHeader, anUnquotedNameRunsToTheSemicolonWithOuterBlanksTrimmed)
{
    EXPECT_EQ(fileName("filename=  My Plan.tessaloom  ; x=y"), "My Plan.tessaloom");
}

TEST(PartHeader, anUnquotedNameIsCutAtItsSemicolon)
{
    EXPECT_EQ(fileName("filename=My;Plan.tessaloom"), "My");
}

TEST(PartHeader, aStrayQuotationMarkSwallowsWhatFollows)
{
    EXPECT_EQ(fileName("filename=My\"Plan.tess; size=5; x=y"), "My\"Plan.tess; size=5; x=y");
    EXPECT_EQ(PartHeader::parse("Content-Disposition: form-data; filename=a\"b; name=file").fieldName, "");
}

TEST(PartHeader, aPairOfQuotationMarksInsideAnUnquotedNameStays)
{
    EXPECT_EQ(fileName("filename=a\"b;c\"d; x=y"), "a\"b;c\"d");
}

TEST(PartHeader, backslashesStayAndHideAQuotationMark)
{
    EXPECT_EQ(fileName(R"(filename="a\"b.tess"; x=y)"), R"(a\"b.tess)");
    EXPECT_EQ(fileName(R"(filename=C:\temp\a.tess)"), R"(C:\temp\a.tess)");
}

TEST(PartHeader, rawUtf8IsReadAsUtf8)
{
    EXPECT_EQ(fileName("filename=Übersicht 図.tess"), "Übersicht 図.tess");
}

TEST(PartHeader, bytesThatAreNoUtf8BecomeReplacementCharacters)
{
    EXPECT_EQ(fileName("filename=a\xff"), "a\xef\xbf\xbd");
}

TEST(PartHeader, tellsAMissingFileNameFromAnEmptyOne)
{
    EXPECT_EQ(fileName("x=y"), std::nullopt);
    EXPECT_EQ(fileName("filename="), "");
    EXPECT_EQ(fileName("filename=\"\""), "");
}

TEST(HeaderParameters, ofSeveralTheLastCounts)
{
    const HeaderParameters parameters("multipart/form-data; Boundary=a; boundary=b");
    EXPECT_EQ(parameters.value("boundary"), "b");
    EXPECT_EQ(parameters.value("charset"), std::nullopt);
    EXPECT_EQ(parameters.value("multipart/form-data"), "");
}

} // namespace
