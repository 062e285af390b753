// Plays the library to the program of samples/wait-for-job/README.md, which is the first argument: it
// waits in this process, as Mono's named events go no further, and a job ends.
using System;
using System.Reflection;
using System.Threading;
using Microsoft.Win32;

class PlayedJob
{
    const string Settings = @"Software\Quillpress\Tarnwick Quillpress";

    static int Main(string[] arguments)
    {
        var program = Assembly.LoadFrom(arguments[0]).EntryPoint;
        if ((int)program.Invoke(null, null) != 1)
        {
            Console.Error.WriteLine("It waits for a printer that has no settings.");
            return 1;
        }
        int status = -1;
        using (var settings = Registry.CurrentUser.CreateSubKey(Settings))
        {
            var waiting = new Thread(() => status = (int)program.Invoke(null, null));
            waiting.Start();
            while (!1.Equals(settings.GetValue("FinishPrintEv")))
            {
                Thread.Sleep(10);
            }
            settings.SetValue("DocName", "Report");
            settings.SetValue("lastfile", @"C:\Out\Report.pdf");
            EventWaitHandle.OpenExisting(@"Local\FinishPrintEv").Set();
            waiting.Join();
        }
        using (var settings = Registry.CurrentUser.OpenSubKey(Settings))
        {
            return status == 0 && 0.Equals(settings.GetValue("FinishPrintEv")) ? 0 : 1;
        }
    }
}
