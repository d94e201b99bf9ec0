// campaign.h - makes planned passes one after the other. Each that is finished lies in the folder,
// whole, so that an interrupted campaign goes on where it stopped.
#ifndef RUN_CAMPAIGN_H
#define RUN_CAMPAIGN_H

#include <string>
#include <vector>

#include "run/plan.h"
#include "run/progress.h"

namespace tables {

class Campaign {
public:
    // Makes the folder, or with resume goes on in it; throws Failure if it belongs to another job.
    Campaign(Job const& job, bool resume, Progress& progress);

    // Makes those of the passes that do not lie in the folder yet. False: the user interrupted.
    bool make(std::vector<PlannedPass> const& plan);

    // The finished passes, in the order of their numbers.
    Passes const& passes() const { return m_passes; }
    // A line for each pass that died and each function that failed.
    std::vector<std::string> const& troubles() const { return m_troubles; }
    // The folder is no longer needed: all is in the files of the user.
    void removeFolder() const;

private:
    bool makeOne(PlannedPass const& pass);
    std::string path(PlannedPass const& pass, char const* extension) const;

    Job m_job;
    Progress& m_progress;
    Passes m_passes;
    std::vector<std::string> m_troubles;
};

} // namespace tables

#endif
