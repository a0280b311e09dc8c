#pragma once

#include <QString>
#include <QStringList>

#include <rapidcheck.h>

#include <functional>
#include <ostream>
#include <vector>

namespace tests::model {

/// What somebody does in a play: a user, a host or a server.
struct Act
{
    const char* words;
    int index;
};

/// As the story of a play is told.
inline void showValue(const Act& act, std::ostream& stream)
{
    stream << "\n  " << act.words;
}

/// Plays of random length in which each act is one of these.
template <std::size_t Count>
rc::Gen<std::vector<Act>> plays(const char* const (&words)[Count])
{
    // Also short plays are made of all acts.
    const auto index = rc::gen::resize(rc::kNominalSize, rc::gen::inRange<int>(0, static_cast<int>(Count)));
    return rc::gen::container<std::vector<Act>>(rc::gen::map(index, [&words](int i) { return Act{words[i], i}; }));
}

/// Lets RapidCheck make the plays. A property that does not hold is a failure of the test, with the shortest play that
/// shows it as a story. Unless RC_PARAMS says otherwise, it is `count` plays, always the same ones.
void expectForAll(int count, const std::function<void()>& property);

/// Within a property: waits until there is to be seen what the model says.
void expectSame(const Act& act, const std::function<QString()>& seen, const QString& model);

} // namespace tests::model
