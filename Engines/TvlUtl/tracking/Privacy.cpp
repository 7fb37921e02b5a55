#include "Privacy.h"

#include "siblings/TvlConfig/PrivacyPreferences.h"
#include "siblings/TvlPref/CPrefObject.h"

namespace TvlUtl::Privacy {

namespace {
using Consent = CPrefObject<bool, CBoxPrefManager>;
Consent shareFeatureUsage(::Privacy::kShareFeatureUsage, true);
Consent shareSearchTerms(::Privacy::kShareSearchTerms, true);
Consent showCrashDialogAgain(::Privacy::kShowCrashDialogAgain, true);
}   // namespace

int GetShareFeatureUsage() { return shareFeatureUsage.GetValue(); }
void SetShareFeatureUsage(int share) { shareFeatureUsage.Change(share != 0); }
int GetShareSearchTerms() { return shareSearchTerms.GetValue(); }
void SetShareSearchTerms(int share) { shareSearchTerms.Change(share != 0); }
int GetShowCrashDialogAgain() { return showCrashDialogAgain.GetValue(); }
void SetShowCrashDialogAgain(int show) { showCrashDialogAgain.Change(show != 0); }

}   // namespace TvlUtl::Privacy
