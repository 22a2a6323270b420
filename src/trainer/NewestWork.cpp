#include "trainer/NewestWork.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace dravik::trainer {

struct NewestWork::Shared {
    struct Piece {
        Work work;
        std::stop_source stop;
        Delivery delivery;
        std::exception_ptr error;

        void perform() {
            try {
                delivery = work(stop.get_token());
            } catch (...) {
                error = std::current_exception();
            }
        }
    };

    std::mutex mutex;
    std::condition_variable changed;
    std::shared_ptr<Piece> newest;   // waiting, going on or ended
    std::shared_ptr<Piece> waiting;  // for the thread
    std::shared_ptr<Piece> ended;
    bool isEnding = false;  // no stop token, see JournalFlusher
    std::thread thread;

    void run() {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return isEnding || waiting; });
            if (isEnding) return;
            std::shared_ptr<Piece> piece = std::exchange(waiting, nullptr);
            lock.unlock();
            piece->perform();
            lock.lock();
            ended = std::move(piece);
            changed.notify_all();
        }
    }
};

NewestWork::NewestWork() : shared_(std::make_unique<Shared>()) {}

NewestWork::~NewestWork() {
    cancel();
    if (!shared_->thread.joinable()) return;
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->isEnding = true;
    }
    shared_->changed.notify_all();
    shared_->thread.join();
}

void NewestWork::start(Work work) {
    auto piece = std::make_shared<Shared::Piece>();
    piece->work = std::move(work);
    cancel();
    if (!shared_->thread.joinable())
        shared_->thread = std::thread([shared = shared_.get()] { shared->run(); });
    const std::lock_guard lock(shared_->mutex);
    shared_->newest = shared_->waiting = std::move(piece);
    shared_->changed.notify_all();
}

void NewestWork::cancel() {
    const std::lock_guard lock(shared_->mutex);
    if (shared_->newest) shared_->newest->stop.request_stop();
    shared_->newest.reset();
    shared_->waiting.reset();
}

bool NewestWork::busy() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->newest != nullptr;
}

bool NewestWork::deliver(std::chrono::milliseconds patience) {
    std::shared_ptr<Shared::Piece> piece;
    {
        std::unique_lock lock(shared_->mutex);
        const auto isEnded = [this] { return shared_->ended == shared_->newest; };
        if (!shared_->newest || !shared_->changed.wait_for(lock, patience, isEnded)) return false;
        piece = std::exchange(shared_->newest, nullptr);
        shared_->ended.reset();
    }
    if (piece->error) std::rethrow_exception(piece->error);
    piece->delivery();
    return true;
}

}  // namespace dravik::trainer
