#include "operations/Detach.h"

#include <QDebug>

namespace orvanlite {

namespace {

QCoro::Task<> watch(QCoro::Task<> task)
{
    try {
        co_await std::move(task);
    } catch (const std::exception& failure) {
        qCritical("an operation ended with an error that nobody took: %s", failure.what());
    } catch (...) {
        qCritical("an operation ended with an unknown error");
    }
}

} // namespace

void detach(QCoro::Task<> task) { watch(std::move(task)); }

} // namespace orvanlite
