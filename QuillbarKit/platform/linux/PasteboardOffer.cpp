#include "platform/linux/PasteboardOffer.h"

#include "platform/linux/UriList.h"

#include <utility>

using PasteboardTypes::Form;

PasteboardOffer::PasteboardOffer(const QStringList& targets)
{
    m_contents.types = PasteboardTypes::types(targets);
    if (PasteboardTypes::isConcealed(targets))
        return;
    for (const Form form : {Form::Files, Form::Text, Form::Rtf, Form::Html, Form::Image}) {
        for (const QString& target : PasteboardTypes::targetsFor(form, targets))
            m_steps.push_back({form, target});
    }
    dropUseless();
}

std::optional<QString> PasteboardOffer::nextTarget() const
{
    if (m_steps.empty())
        return std::nullopt;
    return m_steps.front().target;
}

std::optional<Form> PasteboardOffer::nextForm() const
{
    return m_steps.empty() ? std::nullopt : std::optional(m_steps.front().form);
}

void PasteboardOffer::take(const QByteArray& bytes, const QString& type)
{
    const Step step = std::move(m_steps.front());
    m_steps.pop_front();
    if (!bytes.isEmpty())
        keep(step, bytes, type);
    dropUseless();
}

void PasteboardOffer::skip()
{
    m_steps.pop_front();
    dropUseless();
}

void PasteboardOffer::skipTooLarge()
{
    const Form form = m_steps.front().form;
    if (form != Form::Rtf && form != Form::Html)
        m_steps.clear();
    while (!m_steps.empty() && m_steps.front().form == form)
        m_steps.pop_front();
    dropUseless();
}

bool PasteboardOffer::hasAny() const
{
    // The rich forms come with a text only.
    return !m_contents.filePaths.isEmpty() || m_contents.string || !m_image.isEmpty();
}

void PasteboardOffer::keep(const Step& step, const QByteArray& bytes, const QString& type)
{
    switch (step.form) {
    case Form::Files:
        m_contents.filePaths = UriList::localPaths(bytes);
        break;
    case Form::Text:
        m_contents.string = PasteboardTypes::decodedText(bytes, step.target, type);
        break;
    case Form::Rtf:
        m_contents.data[PasteboardType::rtf] = bytes;
        break;
    case Form::Html:
        m_contents.data[PasteboardType::html] = bytes;
        break;
    case Form::Image:
        m_image = bytes;
        break;
    }
}

bool PasteboardOffer::hasUseFor(Form form) const
{
    if (!m_contents.filePaths.isEmpty())
        return false;
    const bool hasText = m_contents.string && !m_contents.string->trimmed().isEmpty();
    switch (form) {
    case Form::Files:
        return true;
    case Form::Text:
        return !m_contents.string;
    case Form::Rtf:
        return hasText && !m_contents.data.contains(PasteboardType::rtf);
    case Form::Html:
        return hasText && !m_contents.data.contains(PasteboardType::html);
    case Form::Image:
        return !hasText && m_image.isEmpty();
    }
    return false;
}

void PasteboardOffer::dropUseless()
{
    while (!m_steps.empty() && !hasUseFor(m_steps.front().form))
        m_steps.pop_front();
}
