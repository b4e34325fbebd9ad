#pragma once

#include <QString>
#include <QStringView>

#include <vector>

/// Finds links in free text.
class LinkDetector
{
public:
    struct Match
    {
        /// Where the link stands, in UTF-16 units of the text searched.
        qsizetype position = 0;
        qsizetype length = 0;
        /// The link as it stands, completed with a scheme where the text leaves it out.
        QString url;

        bool operator==(const Match&) const = default;
    };

    virtual ~LinkDetector() = default;

    /// All links of the text, from left to right, none overlapping another. None holds whitespace: a link
    /// ends where a blank or a line break begins.
    virtual std::vector<Match> matches(QStringView text) const = 0;
};
