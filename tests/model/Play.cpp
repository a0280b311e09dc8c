#include "tests/model/Play.h"

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

} // namespace tests::model
