// SPDX-License-Identifier: MIT
#include <GenApi/Persistence.h>
#include <GenApi/PersistenceDevice.h>

#include <algorithm>
#include <exception>
#include <sstream>

namespace GENAPI_NAMESPACE {

struct CFeatureBag::Private
{
    Persistence::Settings settings;
    gcstring name;
};

namespace {

bool isSame(const Persistence::Entry &left, const Persistence::Entry &right)
{
    return left.feature == right.feature && left.selection == right.selection && left.value == right.value;
}

void tell(gcstring_vector *errors, const std::string &text)
{
    if (errors && !text.empty())
        errors->push_back(gcstring(text.data(), text.size()));
}

bool isError(const Persistence::Problem &problem)
{
    return problem.severity == Persistence::Severity::Error;
}

INodeMap &checked(INodeMap *nodeMap)
{
    if (!nodeMap)
        throw INVALID_ARGUMENT_EXCEPTION("There is no node map");
    return *nodeMap;
}

/// Whether settings could not be used.
bool tellAll(const std::vector<Persistence::Problem> &problems, gcstring_vector *errors)
{
    for (const Persistence::Problem &problem : problems)
        tell(errors, problem.text);
    return std::any_of(problems.begin(), problems.end(), isError);
}

} // namespace

CFeatureBag::CFeatureBag() : d(new Private) { }
CFeatureBag::CFeatureBag(const CFeatureBag &other) : d(new Private(*other.d)) { }
CFeatureBag &CFeatureBag::operator=(const CFeatureBag &other)
{
    *d = Private(*other.d);
    return *this;
}
CFeatureBag::~CFeatureBag() = default;

bool CFeatureBag::operator==(const CFeatureBag &other) const
{
    const std::vector<Persistence::Entry> &left = d->settings.entries;
    const std::vector<Persistence::Entry> &right = other.d->settings.entries;
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSame);
}

int64_t CFeatureBag::StoreToBag(INodeMap *nodeMap, const int max, gcstring_vector *filter, gcstring_vector *errors)
{
    const AutoLock lock(checked(nodeMap).GetLock());
    Persistence::StoreOptions options;
    if (filter)
        options.wanted = [filter](const std::string &name) { return filter->contains(name.c_str()); };
    d->settings = Persistence::storeSettings(*nodeMap, options);
    tellAll(std::exchange(d->settings.problems, {}), errors);
    std::vector<Persistence::Entry> &entries = d->settings.entries;
    if (max >= 0 && entries.size() > static_cast<std::size_t>(max))
        entries.resize(static_cast<std::size_t>(max));
    return static_cast<int64_t>(entries.size());
}

bool CFeatureBag::LoadFromBag(INodeMap *nodeMap, bool verify, gcstring_vector *errors)
{
    const AutoLock lock(checked(nodeMap).GetLock());
    const std::vector<Persistence::Entry> &entries = d->settings.entries;
    Persistence::LoadOptions options;
    options.verify = verify;
    const Persistence::LoadReport report = Persistence::loadEntries(*nodeMap, entries, options);
    bool isFailed = tellAll(d->settings.problems, errors);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        isFailed |= !report.outcomes[i].isDone();
        tell(errors, Persistence::messageOf(entries[i], report.outcomes[i]));
    }
    return !tellAll(report.problems, errors) && !isFailed;
}

gcstring CFeatureBag::ToString() const
{
    std::ostringstream stream;
    stream << *this;
    const std::string text = stream.str();
    return gcstring(text.data(), text.size());
}

gcstring CFeatureBag::GetName() const
{
    return d->name;
}

void CFeatureBag::SetName(const gcstring &name)
{
    d->name = name;
}

std::ostream &operator<<(std::ostream &stream, const CFeatureBag &bag)
{
    Persistence::writeSettings(stream, bag.d->settings);
    return stream;
}

std::istream &operator>>(std::istream &stream, CFeatureBag &bag)
{
    try {
        bag.d->settings = Persistence::readSettings(stream);
    } catch (const std::exception &error) { // of the stream's own buffer
        throw RUNTIME_EXCEPTION("The stream cannot be read: %s", error.what());
    }
    return stream;
}

} // namespace GENAPI_NAMESPACE
