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
    number.observe(&owner, [&] { calls.append(u"second %1"_s.arg(*number)); });
    number = 2;
    number.set(2); // an equal value tells as well
    number.mutate([](int& value) {
        ++value;
        ++value;
    });
    EXPECT_EQ(calls.join(u", "),
              u"owner 2, view 2, second 2, owner 2, view 2, second 2, owner 4, view 4, second 4"_s);
}

TEST(Observable, AnObserverEndsWithItsContext)
{
    Observable<QString> text;
    auto first = std::make_unique<QObject>();
    auto second = std::make_unique<QObject>();
    QObject third;
    int firstCalls = 0;
    int secondCalls = 0;
    int thirdCalls = 0;
    // The first observer ends itself and the one that would be called next.
    text.observe(first.get(), [&] {
        ++firstCalls;
        second.reset();
        first.reset();
    });
    text.observe(second.get(), [&] { ++secondCalls; });
    const auto connection = text.observe(&third, [&] { ++thirdCalls; });
    text = u"a"_s;
    text = u"b"_s;
    EXPECT_EQ(firstCalls, 1);
    EXPECT_EQ(secondCalls, 0);
    EXPECT_EQ(thirdCalls, 2);
    QObject::disconnect(connection);
    text = u"c"_s;
    EXPECT_EQ(thirdCalls, 2);
}

TEST(Observable, AnObserverMayAssignAndObserveAnew)
{
    Observable<int> number;
    QObject context;
    QList<int> seen;
    int lateCalls = 0;
    number.observe(&context, [&] {
        if (*number == 1) {
            number.observe(&context, [&] { ++lateCalls; });
            number = 2; // a nested round, which ends before the outer one goes on
        }
    });
    number.observe(&context, [&] { seen.append(*number); });
    number = 1;
    EXPECT_EQ(seen, (QList<int>{2, 2}));
    EXPECT_EQ(lateCalls, 1);
}

} // namespace orvanlite::test
