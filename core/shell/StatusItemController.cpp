#include "core/shell/StatusItemController.h"

namespace quillmar {

StatusItemController::StatusItemController(StatusItemHost& host, const Clock& clock)
    : m_host(host)
    , m_clock(clock)
{
}

void StatusItemController::click()
{
    if (m_host.isPanelVisible()) {
        hide();
        return;
    }
    if (m_lastHide && m_clock.uptime() - *m_lastHide <= reopenGuard)
        return;
    show();
}

void StatusItemController::show()
{
    m_host.showPanel();
}

void StatusItemController::hide()
{
    m_host.hidePanel();
    panelDidHide();
}

void StatusItemController::panelDidHide()
{
    m_lastHide = m_clock.uptime();
}

void StatusItemController::menuSettings()
{
    m_host.openSettingsOnFirstPage();
    m_host.postNotification(openSettingsNotification);
}

} // namespace quillmar
