#include "ui/Spring.h"

#include <cmath>

namespace {
/// The first frame after a change shows the movement one frame in, so that what sets it off is seen at once.
constexpr double headStartSeconds = 1.0 / 60;
} // namespace

/// Runs for as long as the spring moves, in step with the frames.
class Spring::Animation final : public QAbstractAnimation
{
public:
    explicit Animation(Spring& spring) : QAbstractAnimation(&spring), m_spring(spring) {}

    int duration() const override { return -1; }

protected:
    void updateCurrentTime(int milliseconds) override
    {
        if (state() == Running)
            m_spring.advance(headStartSeconds + milliseconds / 1000.0);
    }

private:
    Spring& m_spring;
};

Spring::Spring(QObject* parent) : QObject(parent), m_animation(new Animation(*this))
{
    connect(m_animation, &QAbstractAnimation::stateChanged, this, &Spring::runningChanged);
}

Spring::~Spring() = default;

bool Spring::isRunning() const
{
    return m_animation->state() == QAbstractAnimation::Running;
}

void Spring::setTo(double to)
{
    if (to == m_to)
        return;
    m_to = to;
    Q_EMIT toChanged();
    if (!m_isComplete || !m_isEnabled) {
        m_animation->stop();
        m_velocity = 0;
        setValue(to);
        return;
    }
    m_oscillator = {m_response, m_damping, m_value - m_to, m_velocity};
    m_animation->stop();
    m_animation->start();
}

void Spring::advance(double seconds)
{
    const auto state = m_oscillator.after(seconds);
    const bool hasArrived =
        std::abs(state.displacement) < m_epsilon && std::abs(state.velocity) * m_response < m_epsilon;
    m_velocity = hasArrived ? 0 : state.velocity;
    setValue(hasArrived ? m_to : m_to + state.displacement);
    if (hasArrived)
        m_animation->stop();
}

void Spring::setValue(double value)
{
    if (value == m_value)
        return;
    m_value = value;
    Q_EMIT valueChanged();
}
