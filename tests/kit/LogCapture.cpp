#include "tests/kit/LogCapture.h"

#include <QtGlobal>

#include <atomic>
#include <cstring>
#include <mutex>

namespace tests {

namespace {

std::mutex capturedMutex;
QStringList captured;
std::atomic<QtMessageHandler> handlerBefore = nullptr;

void capture(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (context.category && std::strcmp(context.category, "platform.log") == 0) {
        const std::lock_guard lock(capturedMutex);
        captured.append(message);
    } else if (const QtMessageHandler before = handlerBefore) {
        before(type, context, message);
    }
}

} // namespace

LogCapture::LogCapture()
{
    clear();
    handlerBefore = qInstallMessageHandler(capture);
}

LogCapture::~LogCapture()
{
    qInstallMessageHandler(handlerBefore);
}

QStringList LogCapture::lines() const
{
    const std::lock_guard lock(capturedMutex);
    return captured;
}

void LogCapture::clear()
{
    const std::lock_guard lock(capturedMutex);
    captured.clear();
}

} // namespace tests
