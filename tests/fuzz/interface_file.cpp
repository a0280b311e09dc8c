#include "platform/toolkit/nib/NibLoader.h"
#include "tests/fuzz/Fuzz.h"

#include <QApplication>
#include <QLoggingCategory>

namespace {

QApplication& application()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "interface_file";
    static char* words[] = {name, nullptr};
    // Never destroyed: libFuzzer ends the process in its own way.
    static auto* const made = new QApplication(count, words);
    return *made;
}

} // namespace

/// An interface file, which a host may bring.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    application();
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    QString error;
    QWidget* root = tljira::NibLoader::load(fuzz::bytesOf(data, size), nullptr, &error);
    fuzz::require(root != nullptr || !error.isEmpty(), "a file without views says why");
    delete root;
    return 0;
}
