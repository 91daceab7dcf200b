// SPDX-License-Identifier: MIT
#pragma once

#include <GenApi/GenApi.h>
#include <GenApi/PersistenceFile.h>

#include <functional>
#include <utility>

/// Settings of a node map. Whoever shares the map with others holds its lock around the life of a SelectorGuard: the
/// others would see the selectors wander. No function but those that say so lets an exception out.
namespace Persistence {

enum class Result {
    Done,
    NotTried, ///< somebody stopped, or the device was lost before
    NotFound, ///< the device has no such feature
    SelectorRefused, ///< a selector did not take its position; the feature was not touched
    Refused, ///< by the layer or the device
    TimedOut, ///< the device did not answer
    Differs ///< written, but it reads back as something else
};

struct GENICAM_DECL Outcome
{
    Outcome() = default;
    Outcome(Result what, std::string why = {}) : result(what), reason(std::move(why)) { }

    Result result = Result::NotTried;
    std::string reason; ///< the device's or the layer's own words
    std::string selector; ///< the one that refused
    std::string found; ///< the value that was read
    bool isOfVerify = false; ///< it happened when the value was read back

    bool isDone() const { return result == Result::Done; }
};

/// The sentence for a list of errors, with the selectors' positions and the line behind; empty for what is done.
GENICAM_DECL std::string messageOf(const Entry &entry, const Outcome &outcome);

/// Moves selectors and gives them their positions back, at the end of its life at the latest. A selector that is itself
/// selected gets its position back at each position of the selector above.
class GENICAM_DECL SelectorGuard
{
public:
    explicit SelectorGuard(GenApi::INodeMap &map) : m_map(map) { }
    ~SelectorGuard() { restore(); }
    SelectorGuard(const SelectorGuard &) = delete;
    SelectorGuard &operator=(const SelectorGuard &) = delete;

    /// Writes only the selectors that stand elsewhere. Stops at the first one that refuses.
    Outcome moveTo(const Selection &selection);
    /// The selector shall stay there: it is not put back any more.
    Outcome moveForGood(GenApi::IValue &selector, const std::string &position);
    /// Puts all back.
    void restore();
    /// Of the selectors that could not be put back since the last call.
    std::vector<Problem> takeProblems() { return std::exchange(m_problems, {}); }

private:
    struct Moved
    {
        GenApi::IValue *selector;
        std::string former;
    };

    void move(GenApi::IValue &selector, const std::string &position, const std::vector<GenApi::IValue *> &outer);
    void putBackSelectedBy(GenApi::IValue &selector, const std::vector<GenApi::IValue *> &butNot = {});
    void putBack(const Moved &moved);

    GenApi::INodeMap &m_map;
    std::vector<Moved> m_moved; // a selector once, at the present positions of those above
    std::vector<Problem> m_problems;
};

// --- One entry

/// Reads the feature at the entry's position; the text is in Outcome::found.
GENICAM_DECL Outcome readEntry(GenApi::INodeMap &map, const Entry &entry, SelectorGuard &guard);
/// Writes the entry. What cannot be written now but has this value already is done.
GENICAM_DECL Outcome applyEntry(GenApi::INodeMap &map, const Entry &entry, SelectorGuard &guard);
/// Reads anew from the device and compares: texts, or numbers that the texts stand for.
GENICAM_DECL Outcome verifyEntry(GenApi::INodeMap &map, const Entry &entry, SelectorGuard &guard);

// --- All entries

/// The ranks of entries in an order for reading: those at the same position together, so that the selectors move once
/// for all; those without selectors first, while these have their own positions.
GENICAM_DECL std::vector<std::size_t> groupedBySelection(const std::vector<Entry> &entries,
                                                         const std::vector<std::size_t> &ranks);

/// A feature at one position of its selectors, where they stand now.
struct GENICAM_DECL Place
{
    std::size_t feature; ///< rank of the feature in the order of files
    const std::string &name;
    const Selection &selection;
    GenApi::IValue &value; ///< readable and writable
};

/// The features that files hold (streamable, below Root, no commands), in the order of files, and the selectors of
/// each.
class GENICAM_DECL StoreWalk
{
public:
    struct Feature
    {
        std::string name;
        GenApi::IValue *value;
        std::vector<GenApi::IValue *> selectors; ///< outermost first
    };

    /// \param wanted features for which it is false are left out; all are taken if it is empty
    /// \param takesUnmarked also features that are not streamable
    explicit StoreWalk(GenApi::INodeMap &map, const std::function<bool(const std::string &)> &wanted = {},
                       bool takesUnmarked = false);

    const std::vector<Feature> &features() const { return m_features; }
    /// Calls `visit` for each feature at each position that it can be reached at, until that is false. Features with
    /// the same selectors are visited together, so that these move once: within a feature the positions come in the
    /// order of files, the features do not. Ends early as storeSettings() does. \returns what could not be visited
    std::vector<Problem> run(SelectorGuard &guard, const std::function<bool(const Place &)> &visit) const;

private:
    std::vector<Feature> m_features;
};

struct GENICAM_DECL StoreOptions
{
    std::function<bool(const std::string &)> wanted; ///< see StoreWalk
    bool takesUnmarked = false; ///< see StoreWalk
    std::function<bool(std::size_t entries)> step; ///< called after each entry; false ends the walk
};

/// The entries of a device as a file would hold them, and who the device is. Ends early when the device does not answer
/// several times in a row.
GENICAM_DECL Settings storeSettings(GenApi::INodeMap &map, const StoreOptions &options = {});
/// Who the device of a map is, as far as the map tells.
GENICAM_DECL DeviceInfo deviceInfo(GenApi::INodeMap &map);

struct GENICAM_DECL LoadOptions
{
    bool verify = true;
    /// Called after each access to an entry, several times for one that is verified or tried again; false ends the
    /// load.
    std::function<bool(std::size_t entry, const Outcome &outcome)> step;
};

struct GENICAM_DECL LoadReport
{
    std::vector<Outcome> outcomes; ///< one for each entry
    std::vector<Problem> problems; ///< selectors that could not be put back
};

/// Writes the entries in their order, those that are refused again until that changes nothing any more, then verifies.
/// What does not read back as written is tried again likewise; what was verified is not touched any more. Ends early
/// when the device does not answer several times in a row.
GENICAM_DECL LoadReport loadEntries(GenApi::INodeMap &map, const std::vector<Entry> &entries,
                                    const LoadOptions &options = {});

/// Executes the commands with which a description lets a device prepare for many accesses, where it has them.
class GENICAM_DECL StreamingScope
{
public:
    enum class Direction { Store, Load };

    StreamingScope(GenApi::INodeMap &map, Direction direction);
    ~StreamingScope() { end(); }
    StreamingScope(const StreamingScope &) = delete;
    StreamingScope &operator=(const StreamingScope &) = delete;

    void end();

private:
    GenApi::INodeMap &m_map;
    std::vector<const char *> m_ends; // the commands that are still due
};

} // namespace Persistence
