// side.cpp - one library's readings out of tables that hold two.
#include "core/failure.h"
#include "export/formats.h"

namespace tables {

std::vector<SidePass> passesOf(MachineFindings const& machine, Side side) {
    bool const other = side == Side::baseline && !machine.before.empty();
    std::vector<SidePass> passes;
    for (Pass const& pass : other ? machine.before : machine.passes.list) {
        if (pass.control()) {
            continue;
        }
        SidePass one{&pass.head, {}};
        for (Reading const& reading : pass.readings) {
            Point const* const point = &machine.passes.points[reading.point];
            if (side == Side::library || other) {
                one.readings.push_back({point, &reading, reading.clocks, reading.usec});
            } else if (reading.ratio > 0) {
                one.readings.push_back({point, &reading, reading.clocks / reading.ratio,
                                        reading.usec / reading.ratio});
            }
        }
        if (!one.readings.empty()) {
            passes.push_back(std::move(one));
        }
    }
    return passes;
}

std::vector<SidePass> passesOf(Findings const& findings, Side side) {
    std::vector<SidePass> passes;
    for (MachineFindings const& machine : findings.machines) {
        std::vector<SidePass> own = passesOf(machine, side);
        passes.insert(passes.end(), own.begin(), own.end());
    }
    if (passes.empty()) {
        throw Failure("the tables have no baseline");
    }
    return passes;
}

} // namespace tables
