#include "platform/toolkit/nib/ViewClasses.h"

#include "platform/toolkit/nib/RegisteredViews.h"
#include "platform/toolkit/tables/TableCellView.h"
#include "platform/toolkit/tables/TableView.h"
#include "platform/toolkit/views/ElidedLabel.h"
#include "platform/toolkit/views/Glyph.h"
#include "platform/toolkit/views/ImageView.h"
#include "platform/toolkit/views/MessageLine.h"
#include "platform/toolkit/views/ProgressIndicator.h"
#include "platform/toolkit/views/PushButton.h"
#include "platform/toolkit/views/TextScroll.h"
#include "platform/toolkit/windows/AlertView.h"

#include <QHash>

#include <vector>

namespace tljira {

namespace {

template <class View>
QWidget* make(QWidget* parent)
{
    return new View(parent);
}

QHash<QString, ViewMaker>& makers()
{
    static QHash<QString, ViewMaker> all = {
        {QStringLiteral("QPushButton"), make<PushButton>},
        {QStringLiteral("tljira::AlertView"), make<AlertView>},
        {QStringLiteral("tljira::ElidedLabel"), make<ElidedLabel>},
        {QStringLiteral("tljira::Glyph"), make<Glyph>},
        {QStringLiteral("tljira::ImageView"), make<ImageView>},
        {QStringLiteral("tljira::MessageLine"), make<MessageLine>},
        {QStringLiteral("tljira::ProgressIndicator"), make<ProgressIndicator>},
        {QStringLiteral("tljira::TableCellView"), make<TableCellView>},
        {QStringLiteral("tljira::TableView"), make<TableView>},
        {QStringLiteral("tljira::TextScroll"), make<TextScroll>},
    };
    return all;
}

std::vector<ViewObserver>& observers()
{
    static std::vector<ViewObserver> all;
    return all;
}

} // namespace

void registerViewClass(const QString& className, ViewMaker maker)
{
    makers()[className] = std::move(maker);
}

void observeLoadedViews(ViewObserver observer)
{
    observers().push_back(std::move(observer));
}

QWidget* makeRegisteredView(const QString& className, QWidget* parent)
{
    const ViewMaker maker = makers().value(className);
    return maker ? maker(parent) : nullptr;
}

void announceLoadedView(QWidget* view)
{
    for (const ViewObserver& observer : observers())
        observer(view);
}

} // namespace tljira
