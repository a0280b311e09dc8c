#include "tests/layout/Look.h"

#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLocale>
#include <QProxyStyle>

#include <numeric>

namespace tests {

namespace {

QPalette paletteOf(Look::Colors colors)
{
    if (colors == Look::Colors::Light)
        return QPalette(QColor(0xEF, 0xEF, 0xEF));
    const bool isDark = colors == Look::Colors::Dark;
    const QColor window = isDark ? QColor(0x2B, 0x2D, 0x30) : QColor(Qt::black);
    const QColor text = isDark ? QColor(0xE4, 0xE6, 0xEA) : QColor(Qt::white);
    const QColor button = isDark ? QColor(0x3A, 0x3D, 0x41) : QColor(Qt::black);
    QPalette palette(text, button, button.lighter(140), Qt::black, Qt::darkGray, text, Qt::white,
                     isDark ? QColor(0x1E, 0x1F, 0x22) : QColor(Qt::black), window);
    palette.setColor(QPalette::Highlight, isDark ? QColor(0x3D, 0x7E, 0xD9) : QColor(Qt::yellow));
    palette.setColor(QPalette::HighlightedText, isDark ? Qt::white : Qt::black);
    palette.setColor(QPalette::PlaceholderText, isDark ? QColor(0x9A, 0x9F, 0xA8) : QColor(Qt::white));
    palette.setColor(QPalette::Link, isDark ? QColor(0x7F, 0xB2, 0xFF) : QColor(Qt::yellow));
    return palette;
}

/// A language that says everything at greater length.
class LongWords : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char*, const char* source, const char*, int) const override
    {
        const QString text = QString::fromUtf8(source);
        // Of a time or a rate only the words are translated, and no language has long ones there.
        if (text.contains(u'%'))
            return QString();
        QString longer;
        for (const QChar character : text) {
            longer.append(character);
            if (QStringLiteral("aeiou").contains(character))
                longer.append(character);
            if (character == u'e')
                longer.append(u'n');
        }
        return longer;
    }
};

/// Nothing slides.
class StillStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        return hint == SH_Widget_Animation_Duration ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

void PrintTo(const Look& look, std::ostream* out)
{
    *out << look.name;
}

std::vector<Look> allLooks()
{
    Look plain{.name = "plain"};
    plain.sizes.resize(24 - 9 + 1);
    std::iota(plain.sizes.begin(), plain.sizes.end(), 9);
    return {
        plain,
        {.name = "dark", .colors = Look::Colors::Dark, .sizes = {9, 11}},
        {.name = "highContrast", .colors = Look::Colors::HighContrast, .sizes = {10, 18}},
        {.name = "german", .language = "de"},
        {.name = "longWords", .hasLongWords = true},
        {.name = "chinese",
         .person = "欧阳修远·司马相如与诸葛孔明先生",
         .document = "港口毛毯的图纸与全部修改意见.tessaloom"},
        {.name = "arabic",
         .direction = Qt::RightToLeft,
         .person = "محمد عبد الرحمن بن عبد الله الهاشمي",
         .document = "بطانية الميناء مع جميع التصحيحات.tessaloom"},
        {.name = "hindi", .person = "श्री कृष्णमूर्ति सुब्रह्मण्यम अय्यर", .document = "बंदरगाह का कंबल और सभी सुधार.tessaloom"}};
}

Desktop::Desktop(const Look& look)
{
    QLocale::setDefault(QLocale(QLatin1String(look.language)));
    QApplication::setStyle(new StillStyle);
    QApplication::setPalette(paletteOf(look.colors));
    QGuiApplication::setLayoutDirection(look.direction);
    if (look.hasLongWords) {
        m_longWords = std::make_unique<LongWords>();
        QCoreApplication::installTranslator(m_longWords.get());
    }
}

Desktop::~Desktop()
{
    QApplication::setFont(QFont());
}

void Desktop::setFontSize(int points) const
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSize(points);
    QApplication::setFont(font);
    // The widgets that there are hear of it in a later turn.
    drainMainQueue();
}

} // namespace tests
