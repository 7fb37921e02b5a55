// Its presence in a process is all that it is for.
extern "C" int unitTestMarker;
int unitTestMarker = 1;
