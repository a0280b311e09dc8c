#include "platform/toolkit/ViewClasses.h"

#include "platform/toolkit/AlertView.h"
#include "platform/toolkit/ElidedLabel.h"
#include "platform/toolkit/Glyph.h"
#include "platform/toolkit/ImageView.h"
#include "platform/toolkit/MessageLine.h"
#include "platform/toolkit/ProgressIndicator.h"
#include "platform/toolkit/PushButton.h"
#include "platform/toolkit/RegisteredViews.h"
#include "platform/toolkit/TableCellView.h"
#include "platform/toolkit/TableView.h"

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
