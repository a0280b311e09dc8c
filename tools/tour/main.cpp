#include "host/DarkPalette.h"
#include "tools/tour/Tour.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFont>

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace {

const QString darkOption = QStringLiteral("dark");
const QString fontSizeOption = QStringLiteral("font-size");

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Walks through all windows of the sample host against a server of its own and saves their pictures in a "
        "folder. The exit status is 1 if anything differs from what is expected."));
    parser.addOptions({
        {darkOption, QStringLiteral("Use dark colours.")},
        {fontSizeOption, QStringLiteral("Set all texts in letters of this size."), QStringLiteral("POINTS")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this.")},
    });
    parser.addPositionalArgument(QStringLiteral("DIR"), QStringLiteral("The folder for the pictures."));
}

bool isHelpWanted(int argc, char** argv)
{
    return std::any_of(argv + 1, argv + argc,
                       [](std::string_view argument) { return argument == "--help" || argument == "-h"; });
}

int refuse(const QString& why)
{
    std::fprintf(stderr, "tessaloom-tour: %s\n", qPrintable(why));
    return 2;
}

bool setFontSize(const QString& points)
{
    bool isNumber = false;
    const double size = points.toDouble(&isNumber);
    if (!isNumber || !(size >= 4 && size <= 72))
        return false;
    QFont font = QApplication::font();
    font.setPointSizeF(size);
    QApplication::setFont(font);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QCommandLineParser parser;
    describe(parser);
    if (isHelpWanted(argc, argv)) {
        const QCoreApplication application(argc, argv); // A QApplication would ask for a display.
        std::fputs(qPrintable(parser.helpText() + u'\n'), stdout);
        return 0;
    }
    // What the desktop puts in the place of Qt's own cannot be walked through.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tessaloom"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tessaloom"));
    if (!parser.parse(QApplication::arguments()))
        return refuse(parser.errorText());
    const QStringList folders = parser.positionalArguments();
    if (folders.size() != 1)
        return refuse(QStringLiteral("Name one folder for the pictures."));
    if (parser.isSet(fontSizeOption) && !setFontSize(parser.value(fontSizeOption)))
        return refuse(
            QStringLiteral("'%1' is no size of letters from 4 to 72 points.").arg(parser.value(fontSizeOption)));

    // The same pictures wherever the tour is taken.
    QApplication::setStyle(QStringLiteral("Fusion"));
    if (parser.isSet(darkOption))
        QApplication::setPalette(tessaloom::darkPalette());
    return tessaloom::tour::run(folders.constFirst());
}
