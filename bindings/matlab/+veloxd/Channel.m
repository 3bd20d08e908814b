classdef Channel < handle
%VELOXD.CHANNEL  Samples in lines of points, and what their axes mean. VELOXD.FILE's method CHANNEL gives one.
%   name      that of the signal axis, such as "Topography"
%   values    all samples in the unit of the signal axis, lines x points (double); points not measured are NaN
%   raw       all samples as they are stored, lines x points (int32); points not measured are intmin
%   x, y      the axes along and across the lines; signal: that of the samples. Structures with the fields name, unit,
%             minimum and range
%   lines, points
%
%   values, raw, x, y and signal can be set; the file changes when it is saved. Points that were not measured stay so where
%   NaN or intmin is set; elsewhere these are an error veloxd:argument.
    properties (Dependent)
        values
        raw
        x
        y
        signal
    end
    properties (Dependent, SetAccess = private)
        name
        lines
        points
    end
    properties (Access = private)
        file
        group
        slot
    end
    methods
        function self = Channel(file, group, slot)
            self.file = file;
            self.group = group;
            self.slot = slot;
        end

        function values = level(self, operator)
        %LEVEL  All samples through an operator, line by line: "mean", "line", "parabola" or "polynomial" takes away what
        %   is fitted, "derive" gives differences. Lines x points (double); lines too short for a fit are NaN.
            names = {'raw', 'mean', 'line', 'derive', 'parabola', 'polynomial'};
            number = find(strcmp(char(operator), names), 1);
            if isempty(number)
                error('veloxd:argument', 'There is no operator "%s", only: %s.', char(operator), strjoin(names, ', '));
            end
            values = veloxd_mex('readReal', self.file.number(), self.group, self.slot, uint64(number - 1)).';
        end

        function values = get.values(self)
            values = self.level('raw');
        end

        function set.values(self, values)
            veloxd_mex('write', self.file.number(), self.group, self.slot, full(double(values)).');
        end

        function raw = get.raw(self)
            raw = veloxd_mex('readRaw', self.file.number(), self.group, self.slot, uint64(0)).';
        end

        function set.raw(self, raw)
            veloxd_mex('write', self.file.number(), self.group, self.slot, full(int32(raw)).');
        end

        function name = get.name(self)
            name = self.signal.name;
        end

        function lines = get.lines(self)
            lines = self.shape(1);
        end

        function points = get.points(self)
            points = self.shape(2);
        end

        function axis = get.x(self)
            axis = self.axis(0);
        end

        function axis = get.y(self)
            axis = self.axis(1);
        end

        function axis = get.signal(self)
            axis = self.axis(2);
        end

        function set.x(self, axis)
            self.set_axis(0, axis);
        end

        function set.y(self, axis)
            self.set_axis(1, axis);
        end

        function set.signal(self, axis)
            self.set_axis(2, axis);
        end
    end
    methods (Access = private)
        function count = shape(self, dimension)
            shape = veloxd_mex('shape', self.file.number(), self.group, self.slot);
            count = double(shape(dimension));
        end

        function axis = axis(self, number)
            parts = veloxd_mex('axis', self.file.number(), self.group, self.slot, uint64(number));
            axis = struct('name', native2unicode(parts{1}, 'UTF-8'), 'unit', native2unicode(parts{2}, 'UTF-8'), ...
                'minimum', parts{3}, 'range', parts{4});
        end

        function set_axis(self, number, axis)
            for field = {'name', 'unit', 'minimum', 'range'}
                if ~isstruct(axis) || ~isfield(axis, field{1})
                    error('veloxd:argument', 'An axis is a structure with the fields name, unit, minimum and range.');
                end
            end
            veloxd_mex('setAxis', self.file.number(), self.group, self.slot, uint64(number), ...
                unicode2native(char(axis.name), 'UTF-8'), unicode2native(char(axis.unit), 'UTF-8'), ...
                double(axis.minimum), double(axis.range));
        end
    end
end
