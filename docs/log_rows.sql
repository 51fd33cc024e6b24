-- The rows of shipped sessions. "logtool ship --create" makes this table.
--
-- A row may arrive more than once, after a kill or from two senders at a time, and the last line of a log again
-- when it has grown. The engine keeps the longest one of each key when it merges. It merges when it likes, so
-- queries do the same for themselves: ORDER BY number, log, length DESC LIMIT 1 BY number, log.
CREATE TABLE IF NOT EXISTS log_rows
(
    machine String,
    session String,
    number  UInt32,  -- the sequence number
    log     String,
    time    Int64,   -- UTC in 100 ns since 1970; 0 where it is not known
    depth   UInt8,
    kind    UInt32,  -- 2: an error
    header  UInt8,   -- 1: the first row of its block
    block   UInt32,  -- number of the block's header; 0 outside of all blocks
    parent  UInt32,  -- number of the header of the block around that one; 0 where there is none
    length  UInt32,  -- bytes of the text in its file
    text    String   -- UTF-8
)
ENGINE = ReplacingMergeTree(length)
ORDER BY (machine, session, number, log);

-- Several servers: the table above on each of them, and one of these on those that take rows and questions.
-- "fleet" is the cluster's name in the servers' configuration. All rows of a session are on one server.
CREATE TABLE IF NOT EXISTS fleet_rows AS log_rows
ENGINE = Distributed(fleet, '', log_rows, cityHash64(machine, session));
