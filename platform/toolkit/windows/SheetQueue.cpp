#include "platform/toolkit/windows/SheetQueue.h"

#include "platform/foundation/Log.h"
#include "platform/toolkit/windows/Retained.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <algorithm>

namespace tljira {

namespace {

bool isSheetOf(Window& ancestor, const std::shared_ptr<Window>& window)
{
    for (std::shared_ptr<Window> step = window; step; step = step->sheetParent()) {
        if (step.get() == &ancestor)
            return true;
    }
    return false;
}

} // namespace

SheetQueue::SheetQueue(Window& parent)
    : m_parent(parent)
{
}

void SheetQueue::letGo()
{
    m_isFirstUp = false;
    for (const Entry& entry : std::exchange(m_entries, {}))
        WindowParts::of(*entry.sheet).leaveSheet();
}

void SheetQueue::begin(const std::shared_ptr<Window>& sheet, Window::SheetCompletion completion)
{
    if (sheet->sheetParent() || isSheetOf(*sheet, m_parent.shared_from_this())) {
        log(u"window \"%@\" is a sheet already and is not begun again", sheet->title());
        return;
    }
    WindowParts::of(*sheet).becomeSheetOf(m_parent.shared_from_this());
    m_entries.push_back({sheet, std::move(completion)});
    presentNext();
}

void SheetQueue::presentNext()
{
    if (m_isFirstUp || m_running > 0 || m_entries.empty())
        return;
    m_isFirstUp = true;
    if (m_parent.isVisible())
        WindowParts::of(*m_entries.front().sheet).showAsSheet();
}

void SheetQueue::end(const std::shared_ptr<Window>& sheet, int returnCode)
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) { return entry.sheet == sheet; });
    if (found == m_entries.end())
        return;
    const std::shared_ptr<Window> parent = m_parent.shared_from_this();
    const Entry ended = std::move(*found);
    if (found == m_entries.begin())
        m_isFirstUp = false;
    m_entries.erase(found);
    WindowParts::of(*ended.sheet).leaveSheet();
    retainUntilNextTurn(ended.sheet);

    ++m_running;
    if (ended.completion)
        ended.completion(returnCode);
    --m_running;
    presentNext();
    WindowParts::of(m_parent).focus.check();
}

void SheetQueue::endAll(int returnCode)
{
    // A completion may begin a sheet anew; that one stays.
    const std::deque<Entry> present = m_entries;
    ++m_running;
    for (const Entry& entry : present)
        end(entry.sheet, returnCode);
    --m_running;
    presentNext();
}

std::shared_ptr<Window> SheetQueue::attached() const
{
    return m_isFirstUp ? m_entries.front().sheet : nullptr;
}

void SheetQueue::parentVisibilityChanged(bool visible)
{
    const std::shared_ptr<Window> sheet = attached();
    if (!sheet)
        return;
    if (visible)
        WindowParts::of(*sheet).showAsSheet();
    else
        sheet->orderOut();
}

void SheetQueue::parentMoved(const QPoint& distance)
{
    if (const std::shared_ptr<Window> sheet = attached())
        WindowParts::of(*sheet).parentMoved(distance);
}

} // namespace tljira
