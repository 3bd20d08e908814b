// The classes for C#, on files that they and the tool have written. Each check names what it expects; the program ends
// with 1 when one of them is violated.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Threading;
using VELOxd;

static class OxdFileTest
{
    static int failures = 0;

    static void Expect(bool condition, string what)
    {
        if (condition)
            return;
        Console.Error.WriteLine("violated: " + what);
        ++failures;
    }

    static void ExpectFailure<T>(Action step, string text) where T : Exception
    {
        try
        {
            step();
            Expect(false, "throws " + typeof(T).Name + ": " + text);
        }
        catch (Exception failure)
        {
            Expect(failure.GetType() == typeof(T), failure.GetType().Name + " is a " + typeof(T).Name);
            Expect(failure.Message.Contains(text), "\"" + failure.Message + "\" has \"" + text + "\"");
            Expect(!(failure is OxdException) || !failure.Message.Contains("\n"), "one sentence: " + failure.Message);
        }
    }

    // A group "größe 測" of a channel of 3 x 4 samples in nm.
    static void Make(string path)
    {
        using (OxdFile file = OxdFile.Create(path))
        {
            OxdChannel channel = file.AddGroup("größe 測").AddChannels(1, 3, 4)[0];
            channel.SignalAxis = new OxdAxis { Name = "Höhe", Unit = "nm", Minimum = -5, Range = 10 };
            channel.PointAxis = new OxdAxis { Name = "X", Unit = "m", Minimum = 0, Range = 1e-6 };
            channel.Values = new double[,] { { -5, -1, 0, 5 }, { 1, 2, 3, 4 }, { 4, 3, 2, 1 } };
            file.Information["Scan/Head/Gain"] = "5 µA";
            file.Save();
        }
    }

    static void WhatIsWrittenComesBack()
    {
        using (OxdFile file = OxdFile.Open("größe.oxd"))
        {
            OxdChannel channel = file["größe 測"]["Höhe"];
            Expect(channel.Lines == 3 && channel.Points == 4 && channel.PointsOf(2) == 4, "its shape");
            Expect(channel.Raw[0, 0] == -536870912 && channel.Raw[0, 3] == 536870911, "the ends of the raw range");
            Expect(Math.Abs(channel.Values[1, 2] - 3) < 1e-7 && channel.Values[2, 3] != 4, "values in lines and points");
            Expect(channel.SignalAxis.Unit == "nm" && channel.PointAxis.Range == 1e-6 && channel.LineAxis.Name == "Noname",
                "its axes");
            Expect(file.Information["Scan/Head/Gain"] == "5 µA", "information");
            Expect(file.Information.Paths.SequenceEqual(new[] { "Scan/Head/Gain" }), "the paths of information");
        }
    }

    static void SpansAreLinesOneBehindTheOther()
    {
        using (OxdFile file = OxdFile.Open("größe.oxd"))
        {
            OxdChannel channel = file.Groups[0].Channels[0];
            var memory = new double[10];
            channel.ReadLines(1, memory.AsSpan(1, 8));
            Expect(memory[0] == 0 && memory[9] == 0, "what is beside a span stays");
            Expect(memory.Skip(1).Take(8).SequenceEqual(channel.Values.Cast<double>().Skip(4)), "lines 1 and 2");
            channel.ReadLines(0, memory.AsSpan(0, 4), LineOperator.Polynomial);
            Expect(memory.Take(4).All(double.IsNaN), "lines that are too short for a fit are NaN");
            var raw = new[] { 1, -2, 3, -4, 5, -6, 7, -8 };
            channel.WriteRawLines(1, raw);
            var read = new int[8];
            channel.ReadRawLines(1, read);
            Expect(read.SequenceEqual(raw), "raw samples that were written");
            channel.WriteLines(2, new double[] { 1, 2, 3, -5 });
            Expect(channel.Raw[2, 3] == -536870912 && channel.Raw[1, 3] == -4, "one line is written");
            channel.ReadLines(3, new double[0]);
            ExpectFailure<ArgumentException>(() => channel.ReadLines(0, new double[5]), "5 elements, a line 4 points");
            ExpectFailure<ArgumentOutOfRangeException>(() => channel.ReadRawLines(-1, new int[4]), "first");
            ExpectFailure<OxdException>(() => channel.ReadLines(2, new double[8]), "Unable to get channel line");
            ExpectFailure<ArgumentException>(() => channel.WriteLines(0, new[] { 1, 2, double.NaN, 4 }), "is missing");
            ExpectFailure<ArgumentException>(() => channel.WriteRawLines(0, new[] { 1, int.MinValue, 3, 4 }), "is missing");
            Expect(channel.Raw[0, 0] == -536870912, "and nothing was written");
        }
    }

    static void OperatorsLevelLines()
    {
        using (OxdFile file = OxdFile.Open("größe.oxd"))
        {
            OxdChannel channel = file.Groups[0].Channels[0];
            double[,] levelled = channel.Level(LineOperator.Line);
            var line = new double[4];
            channel.ReadLine(1, line, LineOperator.Line);
            for (int point = 0; point < 4; ++point)
            {
                Expect(Math.Abs(levelled[1, point]) < 1e-6, "a straight line becomes flat");
                Expect(levelled[1, point] == line[point], "a line is that of the whole");
            }
        }
    }

    static void PointsThatWereNotMeasuredAreNaN()
    {
        using (OxdFile file = OxdFile.Open("partial.oxd"))
        {
            OxdChannel channel = file.Groups[0].Channels[0];
            double[,] values = channel.Values;
            Expect(channel.PointsOf(0) == 3 && channel.PointsOf(1) == 1, "points of lines");
            Expect(!double.IsNaN(values[1, 0]) && double.IsNaN(values[1, 1]) && double.IsNaN(values[1, 2]), "NaN behind them");
            Expect(channel.Raw[1, 2] == int.MinValue && channel.Raw[1, 0] > int.MinValue, "and raw samples that are none");
            int[,] raw = channel.Raw;
            channel.Raw = raw;
            Expect(channel.Raw.Cast<int>().SequenceEqual(raw.Cast<int>()), "they stay so");
            channel.Values = values;
            Expect(channel.PointsOf(1) == 1, "and as NaN, too");
            ExpectFailure<ArgumentException>(() => channel.Values = new double[,] { { 1, 2, 3 }, { double.NaN, 1, 2 } },
                "Line 1 lacks a sample");
            ExpectFailure<ArgumentException>(() => channel.Raw = new int[,] { { 1, 2, int.MinValue }, { 1, 2, 3 } },
                "Line 0 lacks a sample");
            channel.Raw = new int[,] { { 1, 2, 3 }, { 4, 5, int.MinValue } };
            Expect(channel.PointsOf(1) == 2 && channel.Raw[1, 1] == 5, "more points may be measured");
        }
    }

    static void EditsAreSavedWhenAsked()
    {
        byte[] before = File.ReadAllBytes("größe.oxd");
        using (OxdFile file = OxdFile.Open("größe.oxd"))
        {
            file.Groups[0].Name = "new";
            file.Information["Scan/Head/Gain"] = "6";
            file.SaveAs("other.oxd");
            Expect(file.Path == "other.oxd", "the new name");
            file.Groups[0].Name = "not saved";
        }
        Expect(File.ReadAllBytes("größe.oxd").SequenceEqual(before), "the old file stays");
        using (OxdFile file = OxdFile.Open("other.oxd"))
        {
            Expect(file.Groups[0].Name == "new" && file.Information["Scan/Head/Gain"] == "6", "the new file has the edits");
        }
    }

    static void MistakesAreNamed()
    {
        ExpectFailure<FileNotFoundException>(() => OxdFile.Open("missing.oxd"), "missing.oxd: No such file");
        ExpectFailure<OxdDamagedException>(() => OxdFile.Open("empty.oxd"), "empty.oxd: the file has no header");
        ExpectFailure<OxdDamagedException>(() => OxdFile.Open("cut.oxd"), "cut.oxd: the file ends before its samples do");
        ExpectFailure<ArgumentNullException>(() => OxdFile.Open(null), "path");
        OxdFile file = OxdFile.Open("größe.oxd");
        OxdGroup group = file.Groups[0];
        OxdChannel channel = group.Channels[0];
        ExpectFailure<KeyNotFoundException>(() => file["x"].ToString(), "no group \"x\", only: größe 測");
        ExpectFailure<KeyNotFoundException>(() => group["x"].ToString(), "no channel \"x\", only: Höhe");
        ExpectFailure<KeyNotFoundException>(() => file.Information["Scan/Head"].ToString(), "no information \"Scan/Head\"");
        ExpectFailure<ArgumentException>(() => channel.Values = new double[4, 3], "4 x 3, the channel 3 x 4");
        ExpectFailure<ArgumentException>(() => channel.ReadLine(0, new double[3]), "3 elements, the line 4 points");
        ExpectFailure<OxdException>(() => channel.ReadLine(3, new double[4]), "Unable to get channel line");
        ExpectFailure<OxdException>(() => group.AddChannels(2, 1, 1), "would discard");
        ExpectFailure<FileNotFoundException>(() => file.SaveAs("missing/new.oxd"), "missing/new.oxd");
        Expect(file.Path == "größe.oxd", "a file that could not be saved elsewhere keeps its name");
        file.Dispose();
        file.Dispose();
        using (OxdFile.Open("other.oxd")) // takes the number that became free
        {
            ExpectFailure<ObjectDisposedException>(() => file.Save(), "The file is closed.");
            ExpectFailure<ObjectDisposedException>(() => group.Name.ToString(), "The file is closed.");
            ExpectFailure<ObjectDisposedException>(() => channel.Values.ToString(), "The file is closed.");
        }
    }

    // Each thread hears of its own failures, whatever the others do.
    static void ThreadsUseTheirOwnFiles()
    {
        int wrong = 0;
        var threads = Enumerable.Range(0, 4).Select(number => new Thread(() =>
        {
            for (int i = 0; i < 200; ++i)
            {
                try
                {
                    using (OxdFile file = OxdFile.Open(number % 2 == 0 ? "größe.oxd" : "none.oxd"))
                        wrong += file.Groups[0].Channels[0].Values[1, 3] == 4 || number % 2 == 1 ? 1 : 0;
                }
                catch (FileNotFoundException)
                {
                    Interlocked.Add(ref wrong, number % 2 == 0 ? 1 : 0);
                }
            }
        })).ToList();
        threads.ForEach(thread => thread.Start());
        threads.ForEach(thread => thread.Join());
        Expect(wrong == 0, "threads do not see each other's failures");
    }

    // Files that nobody closes are closed by the runtime: their numbers do not grow beyond those in use.
    static void ForgottenFilesAreClosed()
    {
        for (int i = 0; i < 300; ++i)
        {
            OxdFile.Open("other.oxd");
            if (i % 50 == 0)
            {
                GC.Collect();
                GC.WaitForPendingFinalizers();
            }
        }
        GC.Collect();
        GC.WaitForPendingFinalizers();
        ulong number = VELOxdDll.CreateOxdFile("unused.oxd");
        VELOxdDll.CloseOxdFile(number);
        Expect(number < 200, "numbers are used again: " + number);
    }

    static int Main()
    {
        Make("größe.oxd");
        File.WriteAllText("empty.oxd", "");
        byte[] whole = File.ReadAllBytes("größe.oxd");
        File.WriteAllBytes("cut.oxd", whole.Take(whole.Length - 3).ToArray());
        File.WriteAllText("partial.oxd", "[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=1\r\nGr0-Ch0=A\r\n" +
            "[A]\r\nVersion=3\r\nPoints=3\r\nLines=2\r\nLineDim1Points=1\r\nSaveBits=16\r\n#!abcdefghijkl");
        WhatIsWrittenComesBack();
        OperatorsLevelLines();
        SpansAreLinesOneBehindTheOther();
        PointsThatWereNotMeasuredAreNaN();
        EditsAreSavedWhenAsked();
        MistakesAreNamed();
        ThreadsUseTheirOwnFiles();
        ForgottenFilesAreClosed();
        return failures == 0 ? 0 : 1;
    }
}
