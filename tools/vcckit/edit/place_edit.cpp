#include "vcckit/edit/document_kinds.h"
#include "vcckit/edit/field_edit.h"

#include "core/geometry.h"

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

std::vector<Group> groups_of(const SourceModel& model, const std::vector<Address>& addresses) {
    std::vector<Group> groups;
    for (const Address& address : addresses) {
        const Subject subject = model.subject(address);
        auto known = std::ranges::find_if(groups, [&](const Group& group) {
            return group.home == subject.home && group.address.look == address.look;
        });
        if (known == groups.end())
            known = groups.insert(groups.end(), {address, subject.home, {}});
        known->positions.insert(subject.record ? subject.record->position : 0);
    }
    return groups;
}

struct Axis {
    const char *pixels, *cells, *extent, *source; ///< names of fields
};
constexpr Axis horizontal{"dest_x", "column", "box_width", "src_x"}, vertical{"dest_y", "row", "box_height", "src_y"};

/// One record with a change of one axis.
struct PlaceChange {
    Opened& at;
    const std::set<int>& positions;
    const Axis& axis;
    std::int64_t distance;

    void move() const {
        LanguageSet pixels{}, cells{};
        for (std::size_t i = 0; i < languages.size(); ++i) {
            expect_no_window(i);
            const bool picture = number("graphic", i) != 0;
            const bool in_pixels = picture || (number("dest_x", i) != 0 && number("dest_y", i) != 0);
            (in_pixels ? pixels : cells)[i] = true;
            const std::int64_t place = number(in_pixels ? axis.pixels : axis.cells, i) + distance;
            if (place < -coordinate_limit || place > coordinate_limit)
                throw Refused(std::string(axis.pixels) + " would be " + std::to_string(place));
            if (in_pixels && !picture && place == 0)
                throw Refused(std::string(axis.pixels) +
                              " would be 0: a text is placed in pixels only while both coordinates are not 0");
        }
        shift(axis.pixels, pixels);
        shift(axis.cells, cells);
    }

    void resize() const {
        for (std::size_t i = 0; i < languages.size(); ++i) {
            expect_no_window(i);
            const bool picture = number("graphic", i) != 0;
            const std::int64_t extent = number(axis.extent, i) + distance;
            const std::int64_t least = picture ? number(axis.source, i) + 1 : 0;
            if (extent < least || extent > coordinate_limit)
                throw Refused(std::string(axis.extent) + " would be " + std::to_string(extent) + ", less than " +
                              std::to_string(least) + " or more than there is");
        }
        LanguageSet every;
        every.fill(true);
        shift(axis.extent, every);
    }

private:
    std::int64_t number(const char* field, std::size_t language) const {
        return present_number(at.model, at.subject, field, language).value_or(0);
    }

    void expect_no_window(std::size_t language) const {
        if (number("graphic", language) != 0 &&
            present_text(at.model, at.subject, "text", language).starts_with("TEXT-WIN"))
            throw Refused("the slot shows text window " + std::to_string(number("graphic", 0)) +
                          ": its place is in the file of text windows");
    }

    void shift(const char* field, const LanguageSet& in) const {
        if (in != LanguageSet{})
            shift_field(at, field, in, positions, distance);
    }
};

} // namespace

std::string move_or_resize(std::string text, const Operation& operation) {
    const SourceModel model(text);
    const std::vector<Group> groups = groups_of(model, operation.of);
    for (const auto& [axis, distance] : {std::pair(&horizontal, operation.dx), {&vertical, operation.dy}}) {
        if (distance == 0 || groups.empty())
            continue;
        Opened at(text, groups.front().address);
        for (const Group& group : groups) {
            at.subject = at.model.subject(group.address);
            const PlaceChange change{at, group.positions, *axis, distance};
            operation.what == Operation::Do::move ? change.move() : change.resize();
        }
        text = at.edits.result();
    }
    return text;
}

} // namespace vcc::kit::edit
