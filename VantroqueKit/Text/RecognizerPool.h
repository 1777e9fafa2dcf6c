#pragma once

#include "Text/TextRecognizer.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace vantroque {

/// Hands out recognizers, each to one thread at a time. A recognizer takes a while to start, so it
/// is started when one is needed and none is free, and used again afterwards. Any thread; outlives
/// what it hands out.
class RecognizerPool {
public:
    /// Called from any thread, also from several at once.
    using Start = std::function<Result<std::unique_ptr<TextRecognizer>>()>;

    explicit RecognizerPool(Start start) : m_start(std::move(start)) {}

    /// Gives the recognizer back.
    struct GiveBack {
        RecognizerPool* pool = nullptr;
        void operator()(TextRecognizer* recognizer) const;
    };
    using Lease = std::unique_ptr<TextRecognizer, GiveBack>;

    /// A recognizer that remembers no picture. Fails with the engine's words when none can be
    /// started.
    Result<Lease> take();

private:
    std::unique_ptr<TextRecognizer> takeFree();

    const Start m_start;
    std::mutex m_mutex; ///< Guards what follows.
    std::vector<std::unique_ptr<TextRecognizer>> m_free;
};

} // namespace vantroque
