#include "tests/model/Play.h"

#include "tests/kit/WaitUntil.h"

#include <gtest/gtest.h>

namespace tests::model {

void expectForAll(int count, const std::function<void()>& property)
{
    // Read once, at the first use.
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "seed=1 max_size=25 max_success=" + QByteArray::number(count));
    const auto result = rc::detail::checkTestable(property);
    if (result.template is<rc::detail::SuccessResult>())
        return;
    std::ostringstream story;
    rc::detail::printResultMessage(result, story);
    FAIL() << story.str();
}

void expectSame(const Act& act, const std::function<QString()>& seen, const QString& model)
{
    // A machine may be busy; but each step towards the shortest story waits so long in vain.
    waitUntil([&] { return seen() == model; }, std::chrono::seconds(30));
    const QString last = seen();
    if (last != model)
        RC_FAIL(QStringLiteral("after \"%1\" there is\n  %2\ninstead of\n  %3")
                    .arg(QString::fromUtf8(act.words), last, model)
                    .toStdString());
}

} // namespace tests::model
