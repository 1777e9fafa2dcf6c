#include "Text/RecognizerPool.h"

namespace vantroque {

void RecognizerPool::GiveBack::operator()(TextRecognizer* recognizer) const
{
    const std::scoped_lock lock(pool->m_mutex);
    pool->m_free.emplace_back(recognizer);
}

Result<RecognizerPool::Lease> RecognizerPool::take()
{
    auto recognizer = takeFree();
    if (!recognizer)
        recognizer = TRY(m_start());
    recognizer->forget();
    return Lease(recognizer.release(), GiveBack{this});
}

std::unique_ptr<TextRecognizer> RecognizerPool::takeFree()
{
    const std::scoped_lock lock(m_mutex);
    if (m_free.empty())
        return nullptr;
    auto recognizer = std::move(m_free.back());
    m_free.pop_back();
    return recognizer;
}

} // namespace vantroque
