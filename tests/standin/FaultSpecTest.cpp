#include "standin/FaultSpec.h"

#include <gtest/gtest.h>

namespace {

using namespace standin;
using namespace std::chrono_literals;

TEST(FaultSpec, readsAnAnswer)
{
    const auto spec = FaultSpec::parse("/rest/*=status:503,type:text/html,text:<p>a, b = c</p>");
    ASSERT_TRUE(spec);
    EXPECT_EQ(spec->match.path, "/rest/*");
    EXPECT_EQ(spec->match.times, -1);
    ASSERT_TRUE(spec->fault.answer());
    EXPECT_EQ(spec->fault.answer()->code, 503);
    EXPECT_EQ(spec->fault.answer()->contentType, "text/html");
    EXPECT_EQ(spec->fault.answer()->body, "<p>a, b = c</p>");
}

TEST(FaultSpec, readsWhichRequestsAreMeant)
{
    const auto spec = FaultSpec::parse("*=method:POST,times:2,skip:3,early");
    ASSERT_TRUE(spec);
    EXPECT_EQ(spec->match.method, "POST");
    EXPECT_EQ(spec->match.times, 2);
    EXPECT_EQ(spec->match.skip, 3);
    EXPECT_TRUE(spec->fault.answersBeforeBody());
    EXPECT_FALSE(spec->fault.answer());
}

TEST(FaultSpec, readsStops)
{
    const auto spec = FaultSpec::parse("*=close@request:5,reset@head:0,hold@body:7,delay:250@body:9");
    ASSERT_TRUE(spec);
    const auto& stops = spec->fault.stops();
    ASSERT_EQ(stops.size(), 4U);
    EXPECT_EQ(stops[0].action, Stop::Action::close);
    EXPECT_EQ(stops[0].point.stream, Point::Stream::requestBody);
    EXPECT_EQ(stops[0].point.bytes, 5);
    EXPECT_EQ(stops[1].action, Stop::Action::reset);
    EXPECT_EQ(stops[1].point.stream, Point::Stream::responseHead);
    EXPECT_EQ(stops[2].action, Stop::Action::hold);
    EXPECT_EQ(stops[2].point.stream, Point::Stream::responseBody);
    EXPECT_EQ(stops[3].action, Stop::Action::delay);
    EXPECT_EQ(stops[3].duration, 250ms);
    EXPECT_EQ(stops[3].point.bytes, 9);
}

TEST(FaultSpec, readsFraming)
{
    const auto spec = FaultSpec::parse("*=chunked:5,gzip:8,announce:-3,nolength");
    ASSERT_TRUE(spec);
    EXPECT_EQ(spec->fault.chunks()->missing, 5);
    EXPECT_EQ(spec->fault.gzipMissing(), 8);
    EXPECT_EQ(spec->fault.announced(), -3);
    EXPECT_TRUE(spec->fault.hidesLength());
    const auto whole = FaultSpec::parse("*=chunked,gzip,announce:+4");
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->fault.chunks()->missing, 0);
    EXPECT_EQ(whole->fault.gzipMissing(), 0);
    EXPECT_EQ(whole->fault.announced(), 4);
}

TEST(FaultSpec, readsPaces)
{
    const auto spec = FaultSpec::parse("*=drip:1/20,sip:4096/5");
    ASSERT_TRUE(spec);
    EXPECT_EQ(spec->fault.dripPace()->bytes, 1U);
    EXPECT_EQ(spec->fault.dripPace()->interval, 20ms);
    EXPECT_EQ(spec->fault.sipPace()->bytes, 4096U);
    EXPECT_EQ(spec->fault.sipPace()->interval, 5ms);
}

TEST(FaultSpec, readsHeadersAndRedirects)
{
    const auto spec = FaultSpec::parse("*=redirect:http://anna@h:1/x,header:X-A=b=c,headers:2000");
    ASSERT_TRUE(spec);
    EXPECT_EQ(spec->fault.answer()->code, 302);
    const auto& headers = spec->fault.headers();
    ASSERT_EQ(headers.size(), 4U);
    EXPECT_EQ(headers[0], std::pair(std::string("Location"), std::string("http://anna@h:1/x")));
    EXPECT_EQ(headers[1], std::pair(std::string("X-A"), std::string("b=c")));
    EXPECT_TRUE(FaultSpec::parse("*=loop")->fault.redirectsToItself());
    EXPECT_EQ(FaultSpec::parse("*=ratelimit:3")->fault.answer()->code, 429);
}

TEST(FaultSpec, refusesWhatItDoesNotKnow)
{
    for (const char* text : {"", "*", "*=", "=early", "*=nonsense", "*=status:x", "*=status:5", "*=close",
                             "*=close@body", "*=close@tail:5", "*=close@body:-1", "*=delay@body:5", "*=delay:x@body:5",
                             "*=drip:5", "*=drip:0/5", "*=gzip:-1", "*=early,,loop", "*=header:=x"})
        EXPECT_FALSE(FaultSpec::parse(text)) << text;
}

TEST(FaultSpec, theHelpNamesEveryPart)
{
    const auto help = FaultSpec::help();
    for (const char* part : {"status", "type",     "text",     "header",  "headers", "redirect", "loop", "ratelimit",
                             "early",  "announce", "nolength", "chunked", "gzip",    "drip",     "sip",  "close",
                             "reset",  "hold",     "delay",    "times",   "skip",    "method"})
        EXPECT_NE(help.find(part), std::string::npos) << part;
}

} // namespace
