// hovistrellib.dll is the product's resource library: the icons of the program and of its two
// document types. The shell only reads its resources; the one export lets a program that loads
// it check that it has the library of the same release.
extern "C" __declspec(dllexport) unsigned long HOVL_GetVersion(void)
{
    return 22ul << 16;   // release 22.0, as in the version resource
}
