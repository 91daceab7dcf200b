// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>
#include <utility>

/// Runs `work` on a thread of its own and waits for its result, or what it throws, for `limit` at most. None: it has
/// not come back; nobody waits for it any more, and its result is dropped when it comes. It must not use what may go
/// meanwhile.
template <class Work>
std::optional<std::invoke_result_t<Work>> boundedCall(std::chrono::milliseconds limit, Work work)
{
    struct Call
    {
        explicit Call(Work what) : work(std::move(what)) { }

        Work work;
        std::mutex mutex; ///< guards what follows
        std::condition_variable ended;
        std::optional<std::invoke_result_t<Work>> result;
        std::exception_ptr error;

        void run()
        {
            std::optional<std::invoke_result_t<Work>> made;
            std::exception_ptr thrown;
            try {
                made = work();
            } catch (...) {
                thrown = std::current_exception();
            }
            const std::lock_guard<std::mutex> lock(mutex);
            result = std::move(made);
            error = std::move(thrown);
            ended.notify_all();
        }
    };
    const auto call = std::make_shared<Call>(std::move(work));
    std::thread([call] { call->run(); }).detach();
    std::unique_lock<std::mutex> lock(call->mutex);
    if (!call->ended.wait_for(lock, limit, [&] { return call->result || call->error; }))
        return std::nullopt;
    if (call->error)
        std::rethrow_exception(std::exchange(call->error, nullptr));
    return std::move(call->result);
}
