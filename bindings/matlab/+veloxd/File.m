classdef File < handle
%VELOXD.FILE  An open .oxd file: its groups and channels, its information, and saving.
%   VELOXD.OPEN and VELOXD.CREATE give one. A group or a channel is named by its name, the first one of that name, or by
%   its position, from 1. Nothing is written before SAVE. CLOSE, or clearing the last variable that refers to the file or
%   to one of its channels, lets go of it; then every use is an error veloxd:closed.
%
%   Names that are not there are an error veloxd:notFound, whose text lists those that are.
    properties (SetAccess = private)
        path % of the file that SAVE writes
    end
    properties (Access = private)
        open_number = []; % of the data set in the library; empty once it is closed
    end
    methods
        function self = File(number, path)
            self.open_number = number;
            self.path = path;
        end

        function delete(self)
            self.close();
        end

        function close(self)
        %CLOSE  Let go of the data set, without saving. Closing it again does nothing.
            if ~isempty(self.open_number)
                veloxd_mex('close', self.open_number);
                self.open_number = [];
            end
        end

        function names = groups(self)
        %GROUPS  The names of all groups, as a row of cells.
            ids = veloxd_mex('groups', self.number());
            names = cell(1, numel(ids));
            for i = 1:numel(ids)
                names{i} = native2unicode(veloxd_mex('groupName', self.number(), ids(i)), 'UTF-8');
            end
        end

        function names = channels(self, group)
        %CHANNELS  The names of all channels of a group, as a row of cells.
            id = self.group_id(group);
            slots = veloxd_mex('channels', self.number(), id);
            names = cell(1, numel(slots));
            for i = 1:numel(slots)
                axis = veloxd_mex('axis', self.number(), id, slots(i), uint64(2));
                names{i} = native2unicode(axis{1}, 'UTF-8');
            end
        end

        function channel = channel(self, group, channel)
        %CHANNEL  A channel of a group, as a veloxd.Channel.
            id = self.group_id(group);
            names = self.channels(group);
            position = veloxd.File.find_position(channel, names, 'channel');
            slots = veloxd_mex('channels', self.number(), id);
            channel = veloxd.Channel(self, id, slots(position));
        end

        function position = add_group(self, name, bits)
        %ADD_GROUP  Add a group, whose samples a file keeps with 8, 16 or 32 bits (32). Gives its position.
            if nargin < 3
                bits = 32;
            end
            if ~isscalar(bits) || ~any(bits == [8 16 32])
                error('veloxd:argument', 'A file keeps 8, 16 or 32 bits of a sample.');
            end
            name = unicode2native(char(name), 'UTF-8');
            if any(name == 0)
                error('veloxd:argument', 'A text holds a zero character.');
            end
            id = veloxd_mex('addGroup', self.number(), uint64(bits));
            veloxd_mex('setGroupName', self.number(), id, name);
            position = find(veloxd_mex('groups', self.number()) == id);
        end

        function rename_group(self, group, name)
        %RENAME_GROUP  Give a group another name.
            veloxd_mex('setGroupName', self.number(), self.group_id(group), unicode2native(char(name), 'UTF-8'));
        end

        function add_channels(self, group, count, lines, points)
        %ADD_CHANNELS  Give a group without channels COUNT channels of LINES x POINTS samples, all 0.
            id = self.group_id(group);
            for number = {count, lines, points}
                if ~isscalar(number{1}) || ~(number{1} >= 0 && number{1} == fix(number{1}))
                    error('veloxd:argument', 'Counts of channels, lines and points are whole numbers from 0.');
                end
            end
            if ~isempty(veloxd_mex('channels', self.number(), id))
                error('veloxd:argument', 'The group has channels, which another number of channels would discard.');
            end
            veloxd_mex('setChannels', self.number(), id, uint64(count), uint64(lines), uint64(points));
        end

        function value = info(self, path)
        %INFO  The measurement information at a path such as "Scan/Lines", as text.
            node = self.find_node(strsplit(char(path), '/'), false);
            if isempty(node)
                error('veloxd:notFound', 'There is no information "%s".', char(path));
            end
            value = native2unicode(veloxd_mex('nodeValue', self.number(), node), 'UTF-8');
        end

        function set_info(self, path, value)
        %SET_INFO  Set the information at a path; adds it, and the groups that it lacks.
            names = strsplit(char(path), '/');
            node = self.find_node(names, false);
            if ~isempty(node)
                veloxd_mex('setNodeValue', self.number(), node, unicode2native(char(value), 'UTF-8'));
                return
            end
            parent = veloxd_mex('root', self.number());
            for i = 1:numel(names) - 1
                group = self.find_node(names(1:i), true);
                if isempty(group)
                    group = veloxd_mex('addNodeGroup', self.number(), parent, unicode2native(names{i}, 'UTF-8'));
                end
                parent = group;
            end
            veloxd_mex('addItem', self.number(), parent, unicode2native(names{end}, 'UTF-8'), ...
                unicode2native(char(value), 'UTF-8'));
        end

        function save(self)
        %SAVE  Write the data set in place of its old file.
            veloxd_mex('save', self.number(), unicode2native(self.path, 'UTF-8'));
        end

        function save_as(self, path)
        %SAVE_AS  Write the data set to another file, which is the file from then on. The old one stays as it is.
            old = self.path;
            path = char(path);
            veloxd_mex('rename', self.number(), unicode2native(path, 'UTF-8'));
            try
                veloxd_mex('save', self.number(), unicode2native(path, 'UTF-8'));
            catch failure
                try
                    veloxd_mex('rename', self.number(), unicode2native(old, 'UTF-8'));
                catch
                    % What failed first says more.
                end
                rethrow(failure);
            end
            self.path = path;
        end

        function number = number(self)
        %NUMBER  The number of the data set in the library, for the package's own use.
            if isempty(self.open_number)
                error('veloxd:closed', '%s: the file is closed.', self.path);
            end
            number = self.open_number;
        end
    end
    methods (Access = private)
        function id = group_id(self, group)
            position = veloxd.File.find_position(group, self.groups(), 'group');
            ids = veloxd_mex('groups', self.number());
            id = ids(position);
        end

        function node = find_node(self, names, is_group)
        % Empty if there is none. All but the last name are of groups.
            node = veloxd_mex('root', self.number());
            for i = 1:numel(names)
                node = self.find_child(node, names{i}, is_group || i < numel(names));
                if isempty(node)
                    return
                end
            end
        end

        function found = find_child(self, node, name, is_group)
            found = [];
            for child = veloxd_mex('children', self.number(), node)
                if veloxd_mex('isGroup', self.number(), child) == is_group && ...
                        strcmp(native2unicode(veloxd_mex('nodeName', self.number(), child), 'UTF-8'), name)
                    found = child;
                    return
                end
            end
        end
    end
    methods (Static, Access = private)
        function position = find_position(wanted, names, what)
            if isnumeric(wanted)
                position = double(wanted);
                is_there = isscalar(wanted) && position == fix(position) && position >= 1 && position <= numel(names);
                wanted = mat2str(wanted);
            else
                wanted = char(wanted);
                position = find(strcmp(wanted, names), 1);
                is_there = ~isempty(position);
            end
            if ~is_there
                error('veloxd:notFound', 'There is no %s "%s", only: %s.', what, wanted, strjoin(names, ', '));
            end
        end
    end
end
