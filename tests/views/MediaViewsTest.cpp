#include "MediaViewsFixture.h"

#include "media/CoverImage.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

using MediaViewsTest = MediaViewsFixture;

TEST_F(MediaViewsTest, Snap)
{
    launchOpen();
    const auto save = [&](const QString& name) {
        window.grabWindow().save(u"/tmp/mv/"_qs + name + u".png"_qs);
    };
    save(u"empty"_qs);
    auto t = track();
    t.artworkData = picture(600, 600);
    t.canLove = true;
    workspace.names[u"player"_qs] = u"Player"_qs;
    QImage icon(64, 64, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::magenta);
    workspace.icons[u"player"_qs] = icon;
    workspace.running = QStringList{u"player"_qs};
    play(t);
    settle();
    save(u"left-medium"_qs);
    t.isLoved = true;
    t.shuffle = true;
    t.repeatMode = RepeatMode::One;
    play(t);
    settle();
    save(u"loved"_qs);
    for (auto position : {Settings::MediaArtPosition::Right, Settings::MediaArtPosition::Corner,
                          Settings::MediaArtPosition::CornerRight, Settings::MediaArtPosition::Left}) {
        setCover(position, Settings::MediaArtSize::Medium);
        settle();
        save(Settings::rawValue(position));
    }
    for (auto size :
         {Settings::MediaArtSize::Small, Settings::MediaArtSize::Large, Settings::MediaArtSize::XLarge}) {
        setCover(Settings::MediaArtPosition::Left, size);
        settle();
        save(Settings::rawValue(size));
    }
    close();
    save(u"closed"_qs);
}
