#pragma once

#include <QStringView>

#include <memory>

struct psl_ctx_st;

/// The public suffix list: the endings under which anybody can register a name, "com" and "co.uk" alike.
/// Immutable once loaded, for any thread.
class PublicSuffixes
{
public:
    /// The newer of the system's list and the one built into the library, read at the first call and kept
    /// for the life of the process. Null if there is neither.
    static const PublicSuffixes* shared();

    /// Whether the host is a name below a public suffix: "example.com", but not "com" or "file.txt". Only
    /// suffixes of the registries count, so a name that a company lends out ("github.io") is a host, too.
    /// Takes Unicode and "xn--" labels in any case, without a dot at the end.
    bool holdHost(QStringView host) const;

    /// Whether every label of the name is well formed, whatever the name ends in.
    static bool isWellFormed(QStringView host);

private:
    struct Release
    {
        void operator()(psl_ctx_st* list) const;
    };
    using List = std::unique_ptr<psl_ctx_st, Release>;

    explicit PublicSuffixes(List list);
    bool isSuffix(const char* name) const;

    List m_list;
};
