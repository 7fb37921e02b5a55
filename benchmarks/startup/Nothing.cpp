// Does nothing, with the same libraries of others behind it as the suite's own.
extern "C" void DoNothing() { }
