#include "client/JAControllerState.h"

// The properties of the client that are no more than kept.

std::shared_ptr<const JALoginObject> JAController::jaSession() const
{
    return m_state->jaSession.get();
}

std::optional<QString> JAController::pathFile() const
{
    return m_state->pathFile.get();
}

void JAController::setPathFile(const std::optional<QString>& path)
{
    m_state->pathFile.set(path);
}

std::shared_ptr<JAControllerDelegate> JAController::delegate() const
{
    return m_state->delegate.get();
}

void JAController::setDelegate(const std::shared_ptr<JAControllerDelegate>& delegate)
{
    m_state->delegate.set(delegate);
}

std::shared_ptr<tljira::URLSession> JAController::session() const
{
    return m_state->session.get();
}

void JAController::setSession(const std::shared_ptr<tljira::URLSession>& session)
{
    m_state->session.set(session);
}

JAController::DownloadCallBack JAController::downloadCallBack() const
{
    return m_state->downloadCallBack.get();
}

void JAController::setDownloadCallBack(const DownloadCallBack& callBack)
{
    m_state->downloadCallBack.set(callBack);
}

JAController::UploadCallBack JAController::uploadCallBack() const
{
    return m_state->uploadCallBack.get();
}

void JAController::setUploadCallBack(const UploadCallBack& callBack)
{
    m_state->uploadCallBack.set(callBack);
}

void JAController::setJiraHost(const std::optional<QString>& host)
{
    m_state->jiraHost.set(host);
}

std::optional<QString> JAController::savePath() const
{
    return m_state->savePath.get();
}

void JAController::setSavePath(const std::optional<QString>& path)
{
    m_state->savePath.set(path);
}

std::shared_ptr<tljira::URLSessionDataTask> JAController::upladTask() const
{
    return m_state->upladTask.get();
}

void JAController::setUpladTask(const std::shared_ptr<tljira::URLSessionDataTask>& task)
{
    m_state->upladTask.set(task);
}

std::shared_ptr<tljira::URLSessionDownloadTask> JAController::downloadTask() const
{
    return m_state->downloadTask.get();
}

void JAController::setDownloadTask(const std::shared_ptr<tljira::URLSessionDownloadTask>& task)
{
    m_state->downloadTask.set(task);
}
