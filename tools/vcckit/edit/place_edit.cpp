#include "vcckit/edit/place_edit.h"
#include "core/geometry.h"

#include "vcckit/edit/field_edit.h"
#include "vcckit/edit/source_model.h"

#include <algorithm>
#include <set>

namespace vcc::kit::edit {

namespace {

/// Addresses that one table describes.
struct Group {
    Address address; ///< the first of them
    const Node* home = nullptr;
    std::set<int> positions;
};

Result<std::vector<Group>> groups_of(const SourceModel& model, const std::vector<Address>& addresses) {
    std::vector<Group> groups;
    for (const Address& address : addresses) {
        const auto subject = model.subject(address);
        if (!subject)
            return Failure{subject.reason()};
        auto known = std::ranges::find_if(groups, [&](const Group& group) {
            return group.home == subject->home && group.address.look == address.look;
        });
        if (known == groups.end())
            known = groups.insert(groups.end(), {address, subject->home, {}});
        known->positions.insert(subject->record ? subject->record->position : 0);
    }
    return groups;
}

struct Axis {
    const char *pixels, *cells, *extent, *source; ///< names of fields
};
constexpr Axis horizontal{"dest_x", "column", "box_width", "src_x"}, vertical{"dest_y", "row", "box_height", "src_y"};

/// One record with a change of one axis.
class PlaceChange {
public:
    PlaceChange(Opened& at, const std::set<int>& positions, const Axis& axis, std::int64_t distance)
        : at_(at), positions_(positions), axis_(axis), distance_(distance) {}

    std::string move() const {
        LanguageSet pixels{}, cells{};
        for (std::size_t i = 0; i < languages.size(); ++i) {
            if (is_window(i))
                return window_reason();
            const bool picture = number("graphic", i) != 0;
            const bool in_pixels = picture || (number("dest_x", i) != 0 && number("dest_y", i) != 0);
            (in_pixels ? pixels : cells)[i] = true;
            const std::int64_t place = number(in_pixels ? axis_.pixels : axis_.cells, i) + distance_;
            if (place < -coordinate_limit || place > coordinate_limit)
                return std::string(axis_.pixels) + " would be " + std::to_string(place);
            if (in_pixels && !picture && place == 0)
                return std::string(axis_.pixels) +
                       " would be 0: a text is placed in pixels only while both coordinates are not 0";
        }
        std::string reason = shift(axis_.pixels, pixels);
        return reason.empty() ? shift(axis_.cells, cells) : reason;
    }

    std::string resize() const {
        for (std::size_t i = 0; i < languages.size(); ++i) {
            if (is_window(i))
                return window_reason();
            const bool picture = number("graphic", i) != 0;
            const std::int64_t extent = number(axis_.extent, i) + distance_;
            const std::int64_t least = picture ? number(axis_.source, i) + 1 : 0;
            if (extent < least || extent > coordinate_limit)
                return std::string(axis_.extent) + " would be " + std::to_string(extent) + ", less than " +
                       std::to_string(least) + " or more than there is";
        }
        LanguageSet every;
        every.fill(true);
        return shift(axis_.extent, every);
    }

private:
    std::int64_t number(const char* field, std::size_t language) const {
        return present_number(at_.model, at_.subject, field, language).value_or(0);
    }

    bool is_window(std::size_t language) const {
        return number("graphic", language) != 0 &&
               present_text(at_.model, at_.subject, "text", language).starts_with("TEXT-WIN");
    }

    std::string window_reason() const {
        return "the slot shows text window " + std::to_string(number("graphic", 0)) +
               ": its place is in the file of text windows";
    }

    std::string shift(const char* field, const LanguageSet& in) const {
        if (std::ranges::none_of(in, [](bool chosen) { return chosen; }))
            return {};
        return shift_field(at_, field, in, positions_, distance_);
    }

    Opened& at_;
    const std::set<int>& positions_;
    const Axis& axis_;
    std::int64_t distance_;
};

} // namespace

Result<std::string> move_or_resize(std::string text, const Operation& operation) {
    const auto model = SourceModel::read(text);
    const auto groups = model ? groups_of(*model, operation.of) : Failure{model.reason()};
    if (!groups)
        return Failure{groups.reason()};
    for (const auto& [axis, distance] : {std::pair(&horizontal, operation.dx), {&vertical, operation.dy}}) {
        if (distance == 0 || groups->empty())
            continue;
        auto at = open(text, groups->front().address);
        for (const Group& group : *groups) {
            auto subject = at ? at->model.subject(group.address) : Failure{at.reason()};
            if (!subject)
                return Failure{subject.reason()};
            at->subject = std::move(*subject);
            const PlaceChange change(*at, group.positions, *axis, distance);
            std::string reason = operation.what == Operation::Do::move ? change.move() : change.resize();
            if (!reason.empty())
                return Failure{std::move(reason)};
        }
        text = at->edits.result();
    }
    return text;
}

} // namespace vcc::kit::edit
