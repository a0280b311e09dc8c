#include "tests/docs/Workshop.h"
#include "tests/kit/Printers.h"

#include <gmock/gmock.h>

namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::Not;
using tests::docs::Outcome;
using tests::docs::Workshop;

TEST(Making, installsBelowThePrefix)
{
    const Workshop workshop;
    const Outcome run = workshop.shell(u"make install PREFIX=/usr/local\n"
                                       "env -u LD_LIBRARY_PATH root/usr/local/bin/tljira --version\n"_s);
    EXPECT_EQ(run.output, u"tljira 1.0.0\n"_s);
    EXPECT_EQ(run.status, 0);
}

TEST(Making, measuresTheReleaseBuildWhateverThePreset)
{
    const Workshop workshop;
    for (const char* target : {"bench", "bench-report"}) {
        const Outcome run =
            workshop.run(u"make"_s, {u"-n"_s, u"--no-print-directory"_s, u"-C"_s, QStringLiteral(PROJECT_FOLDER),
                                     u"PRESET=debug"_s, QString::fromLatin1(target)});
        EXPECT_EQ(run.status, 0);
        EXPECT_THAT(run.output.toStdString(), HasSubstr("cmake --build --preset release"));
        EXPECT_THAT(run.output.toStdString(), Not(HasSubstr("debug")));
    }
}

TEST(Making, takesWarningsForErrorsInThePresetsOfDevelopersAlone)
{
    const Workshop workshop;
    const auto settings = [&](const char* preset) {
        return workshop
            .run(u"cmake"_s, {u"-N"_s, u"--preset"_s, QString::fromLatin1(preset)}, QStringLiteral(PROJECT_FOLDER))
            .output.toStdString();
    };
    for (const char* preset : {"debug", "asan", "tsan"})
        EXPECT_THAT(settings(preset), HasSubstr("TL_WARNINGS_AS_ERRORS:BOOL=\"TRUE\""));
    EXPECT_THAT(settings("release"), HasSubstr("CMAKE_BUILD_TYPE=\"Release\""));
    EXPECT_THAT(settings("release"), Not(HasSubstr("TL_WARNINGS_AS_ERRORS")));
}

} // namespace
