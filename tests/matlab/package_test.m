% The package veloxd, on files that it has written: run by Octave in a folder of its own. Each check names what it
% expects; the first one that is violated ends the script. Its argument is the folder of what all languages expect.
folder_of_expected = argv(){1};

function expect(condition, what)
    if ~condition
        error('violated: %s', what);
    end
end

function expect_failure(step, identifier, text)
    try
        step();
    catch failure
        expect(strcmp(failure.identifier, identifier), [failure.identifier ' is ' identifier]);
        expect(~isempty(strfind(failure.message, text)), ['"' failure.message '" has "' text '"']);
        return
    end
    error('violated: fails with %s: %s', identifier, text);
end

function write_bytes(name, bytes)
    stream = fopen(name, 'w');
    fwrite(stream, bytes);
    fclose(stream);
end

function bytes = read_bytes(name)
    stream = fopen(name, 'r');
    bytes = fread(stream, Inf, 'uint8=>uint8').';
    fclose(stream);
end

% A new file: a group with a channel of 3 x 4 samples in nm.
file = veloxd.create("größe.oxd");
expect(file.add_group("größe 測") == 1, 'the position of a new group');
file.add_channels(1, 1, 3, 4);
channel = file.channel(1, 1);
channel.signal = struct('name', 'Höhe', 'unit', 'nm', 'minimum', -5, 'range', 10);
channel.x = struct('name', 'X', 'unit', '', 'minimum', 0, 'range', 1e-6);
channel.values = [-5 -1 0 5; 1 2 3 4; 4 3 2 1];
file.set_info("Scan/Head/Gain", "5 µA");
file.set_info("Scan/Head/Gain", "6 µA");
file.save();
clear file channel

file = veloxd.open("größe.oxd");
channel = file.channel("größe 測", "Höhe");
expect(isequal(file.groups(), {'größe 測'}) && isequal(file.channels(1), {'Höhe'}), 'names');
expect(channel.lines == 3 && channel.points == 4 && isequal(size(channel.values), [3 4]), 'lines x points');
expect(isequal(channel.raw(1, [1 4]), int32([-536870912 536870911])), 'the ends of the raw range');
expect(abs(channel.values(2, 3) - 3) < 1e-7 && abs(channel.values(3, 1) - 4) < 1e-7, 'values in lines and points');
expect(strcmp(channel.signal.unit, 'nm') && channel.x.range == 1e-6 && strcmp(channel.y.name, 'Noname'), 'axes');
expect(strcmp(file.info('Scan/Head/Gain'), '6 µA'), 'information');
expect(max(abs(channel.level("line")(2, :))) < 1e-6, 'a straight line becomes flat');
expect(all(isnan(channel.level("polynomial")(:))), 'lines that are too short for a fit are NaN');
raw = channel.raw;
raw(2, 2) = 7;
channel.raw = raw;
expect(isequal(channel.raw, raw), 'raw samples that were set');

% Edits are saved to another file; the old one stays.
before = read_bytes('größe.oxd');
file.rename_group(1, 'new');
file.save_as('other.oxd');
expect(strcmp(file.path, 'other.oxd') && isequal(read_bytes('größe.oxd'), before), 'the old file stays');
other = veloxd.open('other.oxd');
expect(isequal(other.groups(), {'new'}), 'the new file has the edits');
other.close();

% Mistakes.
expect_failure(@() veloxd.open('missing.oxd'), 'veloxd:file', 'missing.oxd: No such file or directory.');
write_bytes('empty.oxd', '');
expect_failure(@() veloxd.open('empty.oxd'), 'veloxd:damaged', 'empty.oxd: the file has no header');
write_bytes('cut.oxd', before(1:end - 3));
expect_failure(@() veloxd.open('cut.oxd'), 'veloxd:damaged', 'cut.oxd: the file ends before its samples do.');
expect_failure(@() file.channel('x', 1), 'veloxd:notFound', 'no group "x", only: new.');
expect_failure(@() file.channel(1, 'x'), 'veloxd:notFound', 'no channel "x", only: Höhe.');
for position = {0, 2, 1.5, [1 1]}
    expect_failure(@() file.channel(1, position{1}), 'veloxd:notFound', 'There is no channel');
end
expect_failure(@() file.info('Scan/Head'), 'veloxd:notFound', 'no information "Scan/Head"');
expect_failure(@() file.add_channels(1, 1, 1, 1), 'veloxd:argument', 'would discard');
expect_failure(@() channel.level('cubic'), 'veloxd:argument', 'no operator "cubic", only: raw, mean');
expect_failure(@() subsasgn(channel, substruct('.', 'values'), ones(4, 3)), 'veloxd:argument', '3 x 4 (lines x points)');
expect_failure(@() file.save_as('missing/new.oxd'), 'veloxd:file', 'missing/new.oxd: No such file or directory.');
expect(strcmp(file.path, 'other.oxd'), 'a file that could not be saved elsewhere keeps its name');
expect_failure(@() subsasgn(channel, substruct('.', 'x'), struct('name', 'X')), 'veloxd:argument', 'name, unit, minimum and range');
expect_failure(@() file.rename_group(1, ["a" char(0) "b"]), 'veloxd:argument', 'zero character');
expect_failure(@() file.add_group('x', 12), 'veloxd:argument', '8, 16 or 32 bits');
expect_failure(@() file.add_channels(1, -1, 1, 1), 'veloxd:argument', 'whole numbers');
expect_failure(@() veloxd_mex('nonsense', 1), 'veloxd:argument', 'no command "nonsense"');
expect_failure(@() veloxd_mex('groups', 1), 'veloxd:argument', 'uint64 scalar');

% A closed file's objects never reach the file that has its number next.
file.close();
file.close();
next = veloxd.open('other.oxd');
expect_failure(@() channel.values, 'veloxd:closed', 'the file is closed');
expect_failure(@() file.save(), 'veloxd:closed', 'the file is closed');

% Points that were not measured.
write_bytes('partial.oxd', sprintf(['[DataSet]\r\nVersion=2\r\nGroupCount=1\r\nGr0-Count=1\r\nGr0-Ch0=A\r\n' ...
    '[A]\r\nVersion=3\r\nPoints=3\r\nLines=2\r\nLineDim1Points=1\r\nSaveBits=16\r\n#!abcdefghijkl']));
partial = veloxd.open('partial.oxd');
partial = partial.channel(1, 1);
expect(isequal(isnan(partial.values), logical([0 0 0; 0 1 1])), 'NaN behind the points that were measured');
expect(isequal(partial.raw == intmin, isnan(partial.values)), 'and raw samples that are none');
raw = partial.raw;
partial.raw = raw;
expect(isequal(partial.raw, raw), 'points that were not measured stay so');
expect_failure(@() subsasgn(partial, substruct('.', 'raw'), [1 intmin 3; 4 intmin intmin]), 'veloxd:argument', 'Line 1 lacks');
expect_failure(@() subsasgn(partial, substruct('.', 'values'), nan(2, 3)), 'veloxd:argument', 'Line 1 lacks');
expect(isequal(partial.raw, raw), 'and nothing was written');
partial.raw = [1 2 3; 4 5 intmin];
expect(isequal(partial.raw, int32([1 2 3; 4 5 intmin])), 'more points may be measured');
partial.values = sparse(2, 3);
expect(~any(isnan(partial.values(:))), 'sparse matrices are taken');

% The file whose content the tests of all languages know.
expected = jsondecode(fileread(fullfile(folder_of_expected, 'measurement.json')));
file = veloxd.open(fullfile(folder_of_expected, 'measurement.oxd'));
expect(isequal(file.groups(), {expected.groups.name}), 'names of groups');
for group = expected.groups'
    expect(isequal(file.channels(group.name), {group.channels.name}), 'names of channels');
    for wanted = group.channels'
        channel = file.channel(group.name, wanted.name);
        wanted.raw(isnan(wanted.raw)) = intmin;
        expect(isequal(channel.raw, wanted.raw), 'raw samples');
        expect(isequal(isnan(channel.values), isnan(wanted.values)), 'which points were measured');
        expect(max(abs(channel.values(:) - wanted.values(:))) <= 1e-15 * wanted.signal.range, 'values');
        for axis = {'x', 'y', 'signal'}
            expect(isequal(channel.(axis{1}), wanted.(axis{1})), ['the axis ' axis{1}]);
        end
    end
end
for item = expected.information'
    expect(strcmp(file.info(item.path), item.value), item.path);
end

% Files that nothing refers to are closed.
for i = 1:50
    veloxd.open('other.oxd');
end
unused = veloxd_mex('create', uint8('unused.oxd'));
expect(unused < 10, 'numbers of files are used again');
veloxd_mex('close', unused);
