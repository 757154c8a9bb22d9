#include "services/linux/kernel/WorkerThread.h"

#include <QCoreApplication>

#include <utility>

WorkerThread::WorkerThread()
    : m_thread(new QThread)
    , m_worker(new QObject)
{
    m_worker->moveToThread(m_thread);
    QObject::connect(m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread->start();
}

void WorkerThread::post(std::function<void()> work)
{
    QMetaObject::invokeMethod(m_worker, std::move(work), Qt::QueuedConnection);
}

void WorkerThread::end(std::function<void()> lastWork)
{
    post([lastWork = std::move(lastWork)] {
        lastWork();
        QThread::currentThread()->quit();
    });
    if (m_thread->wait(maxEndMs)) {
        delete m_thread;
        return;
    }
    QObject::connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    if (m_thread->isFinished()) // just before the connection
        m_thread->deleteLater();
}

void WorkerThread::postToMainThread(std::function<void()> work)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}
