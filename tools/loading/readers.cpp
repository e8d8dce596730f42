#include "tools/loading/readers.h"

#include <signal.h>

#include <algorithm>
#include <system_error>

Readers::Readers(bool measureMusic) : measures(measureMusic) {
    // Signals are the drawing thread's business.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before);
    try {
        for (unsigned i = 0; i < std::max(2u, std::thread::hardware_concurrency()); i++)
            threads.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
        // With none at all, whoever requests reads.
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

Readers::~Readers() {
    {
        std::lock_guard lock(mutex);
        stopping = true;
    }
    requested.notify_all();
    for (std::thread& thread : threads) thread.join();
}

void Readers::request(const FileName& name) {
    std::unique_lock lock(mutex);
    std::erase_if(waiting, [&](const Request& request) { return request.name.path == name.path; });
    std::erase_if(findings, [&](const ShowFile& file) { return file.name.path == name.path; });
    latest[name.path] = ++requests;
    waiting.push_back({name, requests});
    requested.notify_one();
    if (threads.empty()) serve(lock);
}

std::optional<ShowFile> Readers::take() {
    std::lock_guard lock(mutex);
    if (findings.empty()) return std::nullopt;
    ShowFile file = std::move(findings.front());
    findings.pop_front();
    return file;
}

ShowFile Readers::await(const std::string& path) {
    std::unique_lock lock(mutex);
    auto finding = findings.end();
    found.wait(lock, [&] {
        finding = std::find_if(findings.begin(), findings.end(),
                               [&](const ShowFile& file) { return file.name.path == path; });
        return finding != findings.end();
    });
    ShowFile file = std::move(*finding);
    findings.erase(finding);
    return file;
}

bool Readers::idle() {
    std::lock_guard lock(mutex);
    return waiting.empty() && findings.empty() && busy == 0;
}

void Readers::work() {
    std::unique_lock lock(mutex);
    for (;;) {
        requested.wait(lock, [this] { return stopping || !waiting.empty(); });
        if (stopping) return;
        serve(lock);
    }
}

// The request that has waited longest. With the mutex held, but not while reading.
void Readers::serve(std::unique_lock<std::mutex>& lock) {
    const Request request = waiting.front();
    waiting.pop_front();
    busy++;
    lock.unlock();
    ShowFile file = readShowFile(request.name);
    const auto music = measures && file.problem.empty() ? file.bytes : nullptr;
    report(request.number, std::move(file));
    if (music) report(request.number, measureMusic(request.name, music, stopping));
    lock.lock();
    busy--;
}

void Readers::report(int number, ShowFile file) {
    std::lock_guard lock(mutex);
    if (latest[file.name.path] != number) return;
    findings.push_back(std::move(file));
    found.notify_one();
}
