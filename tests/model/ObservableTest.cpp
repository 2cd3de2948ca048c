#include "model/Observable.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

namespace orvanlite::test {

using namespace Qt::StringLiterals;

TEST(Observable, NotifiesInOrderOfEveryAssignment)
{
    Observable<int> number(1);
    QObject owner;
    QObject view;
    QStringList calls;
    number.observe(&owner, [&] { calls.append(u"owner %1"_s.arg(*number)); });
    number.observe(&view, [&] { calls.append(u"view %1"_s.arg(number.get())); });
    number.observe(&owner, [&] { calls.append(u"last %1"_s.arg(*number)); });
    number = 2;
    number.set(2); // equal values notify as well
    number.mutate([](int& value) { value = 4; });
    EXPECT_EQ(calls.join(u' '), u"owner 2 view 2 last 2 owner 2 view 2 last 2 owner 4 view 4 last 4"_s);
}

TEST(Observable, ObserverEndsWithItsContext)
{
    Observable<QString> text;
    auto first = std::make_unique<QObject>();
    auto second = std::make_unique<QObject>();
    QObject third;
    QStringList calls;
    // The first observer ends itself and the one that would be called next.
    text.observe(first.get(), [&] {
        calls.append(u"first"_s);
        second.reset();
        first.reset();
    });
    text.observe(second.get(), [&] { calls.append(u"second"_s); });
    const auto connection = text.observe(&third, [&] { calls.append(u"third "_s + *text); });
    text = u"a"_s;
    text = u"b"_s;
    QObject::disconnect(connection);
    text = u"c"_s;
    EXPECT_EQ(calls.join(u", "), u"first, third a, third b"_s);
}

} // namespace orvanlite::test
