#include "Pipeline.hpp"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <list>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace tool::bulk {
namespace {

    using Work = std::function<Product(const std::string&)>;
    using Deliver = std::function<void(const std::string&, const Product&)>;

    /// Pieces on their way through the workers.
    class Crew {
    public:
        Crew(unsigned workers, const Work& work, const Deliver& deliver)
            : limit_(std::size_t{4} * workers)
            , work_(work)
            , deliver_(deliver)
        {
        }

        /// Apart from the constructor, so that threads that did start are ended if others cannot.
        void start(unsigned workers)
        {
            threads_.reserve(workers + std::size_t{1});
            for (unsigned i = 0; i < workers; ++i)
                threads_.emplace_back([this] { workOnPieces(); });
            threads_.emplace_back([this] { deliverInOrder(); });
        }

        Crew(const Crew&) = delete;
        Crew& operator=(const Crew&) = delete;

        ~Crew()
        {
            {
                const std::lock_guard lock(mutex_);
                isClosed_ = true;
            }
            changed_.notify_all();
            for (std::thread& thread : threads_)
                thread.join();
        }

        /// Waits until there is room.
        /// @returns false if something has failed, and nothing more is wanted
        bool add(std::string piece)
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return jobs_.size() < limit_ || failure_; });
            if (failure_)
                return false;
            jobs_.push_back({std::move(piece), {}, {}, false});
            waiting_.push_back(&jobs_.back());
            lock.unlock();
            changed_.notify_all();
            return true;
        }

        /// Waits until all is delivered.
        void finish()
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [this] { return jobs_.empty() || failure_; });
            if (failure_)
                std::rethrow_exception(failure_);
        }

    private:
        struct Job {
            std::string piece;
            Product product;
            std::exception_ptr failure;
            bool isDone;
        };

        void workOnPieces()
        {
            std::unique_lock lock(mutex_);
            for (;;) {
                changed_.wait(lock, [this] { return !waiting_.empty() || isClosed_ || failure_; });
                if (waiting_.empty() || failure_)
                    return;
                Job& job = *waiting_.front();
                waiting_.pop_front();
                lock.unlock();
                try {
                    job.product = work_(job.piece);
                } catch (...) {
                    job.failure = std::current_exception();
                }
                lock.lock();
                job.isDone = true;
                changed_.notify_all();
            }
        }

        void deliverInOrder()
        {
            std::unique_lock lock(mutex_);
            for (;;) {
                changed_.wait(lock,
                              [this] { return jobs_.empty() ? isClosed_ : jobs_.front().isDone; });
                if (jobs_.empty())
                    return;
                Job& job = jobs_.front();
                lock.unlock();
                std::exception_ptr failure = job.failure;
                if (!failure) {
                    try {
                        deliver_(job.piece, job.product);
                    } catch (...) {
                        failure = std::current_exception();
                    }
                }
                lock.lock();
                if (failure) {
                    failure_ = failure;
                    changed_.notify_all();
                    return;
                }
                jobs_.pop_front();
                changed_.notify_all();
            }
        }

        const std::size_t limit_;
        const Work& work_;
        const Deliver& deliver_;

        std::mutex mutex_;
        std::condition_variable changed_;
        std::list<Job> jobs_;      // in the order of the input; the front is delivered next
        std::deque<Job*> waiting_; // those that nobody works on yet
        std::exception_ptr failure_;
        bool isClosed_ = false;
        std::vector<std::thread> threads_;
    };

} // namespace

void runInOrder(Pieces& pieces, unsigned workers, const Work& work, const Deliver& deliver)
{
    std::string piece;
    if (workers <= 1) {
        while (pieces.next(piece))
            deliver(piece, work(piece));
        return;
    }

    Crew crew(workers, work, deliver);
    crew.start(workers);
    std::exception_ptr failure;
    try {
        while (pieces.next(piece) && crew.add(std::exchange(piece, {})))
            ;
    } catch (...) {
        failure = std::current_exception();
    }
    crew.finish();
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace tool::bulk
