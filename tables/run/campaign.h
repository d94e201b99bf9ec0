// campaign.h - makes planned passes one after the other. Each that is finished lies in the folder,
// whole, so that an interrupted campaign goes on where it stopped.
#ifndef RUN_CAMPAIGN_H
#define RUN_CAMPAIGN_H

#include <map>
#include <string>
#include <vector>

#include "core/table.h"
#include "run/plan.h"
#include "run/progress.h"

namespace tables {

class Campaign {
public:
    // Makes the job's folder. One that has passes already is gone on in with resume, and refused
    // without; that of another job is always refused.
    Campaign(Job const& job, bool resume, double silenceLimit, Progress& progress);

    // Makes those of the passes that the folder does not have. False: the user interrupted. Throws
    // Failure if the first passes all fail without a reading.
    bool make(std::vector<PlannedPass> const& plan);

    // The finished passes, in the order of their making.
    Passes const& passes() const { return m_passes; }
    // What went wrong, and in how many passes.
    std::map<std::string, int> const& troubles() const { return m_troubles; }
    // The passes are in the user's files now.
    void removeFolder() const;

private:
    void makeOne(PlannedPass const& planned);
    void addTrouble(std::string const& text);
    std::string path(PlannedPass const& planned, char const* ending) const;
    void setHead(Pass& pass, PlannedPass const& planned, std::string const& howEnded) const;

    Job m_job;
    double m_silenceLimit;
    Progress& m_progress;
    Passes m_passes;
    std::map<std::string, int> m_troubles;
    int m_failed = 0;
};

} // namespace tables

#endif
