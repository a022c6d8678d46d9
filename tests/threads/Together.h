// Runs one piece of work in several threads that begin at the same moment.
#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

inline constexpr int kThreads = 8;

/// Calls `work` with the number of the thread, in all threads at once, and waits for them. The work
/// keeps its results; they are judged afterwards in the one thread of the test.
template <typename Work>
void RunTogether(Work work) {
  std::atomic<int> ready = 0;
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&work, &ready, number] {
      for (++ready; ready < kThreads;) {
        std::this_thread::yield();
      }
      work(number);
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

/// What each thread answers.
template <typename Result, typename Work>
std::vector<Result> ResultsOf(Work work) {
  std::vector<Result> results(kThreads);
  RunTogether([&](int number) { results[static_cast<std::size_t>(number)] = work(number); });
  return results;
}

/// The texts that the threads answer.
template <typename Work>
std::vector<std::string> TextsOf(Work work) {
  return ResultsOf<std::string>(work);
}

/// What `work` answers when the threads' parts of it run one after the other.
template <typename Work>
std::vector<std::string> TextsOneByOne(Work work) {
  std::vector<std::string> texts;
  for (int number = 0; number < kThreads; ++number) {
    texts.push_back(work(number));
  }
  return texts;
}
